// Runs Qt Quick Test documents in a widget application: the module's tray icon and drags need one.

#include <QApplication>
#include <QtQuickTest>

int main(int argc, char **argv)
{
    QCoreApplication::setAttribute(Qt::AA_ShareOpenGLContexts);
    const QApplication application(argc, argv);
    return quick_test_main(argc, argv, "component", nullptr);
}
