// A chat client built on the module, with its chat service inside: two windows, Alice's and Bob's, talk to
// each other over a web socket.

#include "chatserver.h"
#include "picturedesk.h"
#include "robot.h"
#include "samplepictures.h"
#include "tourdesktop.h"
#include "typecensus.h"
#include "warningcounter.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFontDatabase>
#include <QQmlApplicationEngine>
#include <QScreen>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <cstdio>
#include <memory>

namespace {

struct Options
{
    QString storeFolder;
    QString pictureFolder;
    bool tour = false;
    bool fresh = false;
};

Options parse(const QApplication &application)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QStringLiteral("Chat client that shows the module at work."));
    const QCommandLineOption store(QStringLiteral("store"), QStringLiteral("Keep the history in <folder>."),
                                   QStringLiteral("folder"));
    const QCommandLineOption fresh(QStringLiteral("fresh"), QStringLiteral("Forget the history first."));
    const QCommandLineOption pictures(
        QStringLiteral("screenshots"),
        QStringLiteral("Walk through all pages, save a picture of each into <folder> and leave."),
        QStringLiteral("folder"));
    const QCommandLineOption smoke(QStringLiteral("smoke"),
                                   QStringLiteral("Walk through all pages, check them and leave."));
    parser.addOptions({store, fresh, pictures, smoke});
    parser.addHelpOption();
    parser.process(application);

    Options options;
    options.storeFolder = parser.value(store);
    options.pictureFolder = parser.value(pictures);
    options.tour = parser.isSet(pictures) || parser.isSet(smoke);
    options.fresh = parser.isSet(fresh);
    return options;
}

void chooseFont()
{
    QFont font = QApplication::font();
    const QString preferred = QStringLiteral("Noto Sans");
    if (QFontDatabase().families().contains(preferred))
        font.setFamily(preferred);
    font.setPixelSize(14);
    QApplication::setFont(font);
}

} // namespace

int main(int argc, char **argv)
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    QCoreApplication::setApplicationName(QStringLiteral("component-chat"));
    const QApplication application(argc, argv);
    const Options options = parse(application);
    WarningCounter::install();
    chooseFont();

    // A tour must neither see nor spoil the history of the person who uses the demo.
    const QTemporaryDir temporary;
    QString store = options.storeFolder;
    if (options.tour) {
        store = temporary.path();
        qputenv("XDG_CONFIG_HOME", temporary.path().toUtf8());
    } else if (store.isEmpty()) {
        store = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
    }

    ChatServer server;
    if (!server.listen()) {
        std::fputs("chat: no port on the loopback interface is free\n", stderr);
        return 1;
    }

    // Where pop-ups and captures open is told by a window that changes its screen; until one does, it is
    // here.
    QCoreApplication::instance()->setProperty("currentScreen",
                                              QVariant::fromValue(QGuiApplication::primaryScreen()));

    const QString pictureFolder = QDir(store).filePath(QStringLiteral("pictures"));
    PictureDesk pictureDesk(pictureFolder);
    SamplePictures samples(pictureFolder);
    // Before the engine, so that nothing is made without it.
    const auto census = options.tour ? std::make_unique<TypeCensus>() : nullptr;
    Robot robot(options.pictureFolder);
    const auto desktop = options.tour ? std::make_unique<TourDesktop>() : nullptr;
    QQmlApplicationEngine engine;
    engine.addImportPath(QDir(QCoreApplication::applicationDirPath()).filePath(QStringLiteral("../qml")));
    engine.setOfflineStoragePath(store);
    engine.setInitialProperties(
        {{QStringLiteral("serverUrl"), server.url()},
         {QStringLiteral("fresh"), options.fresh},
         {QStringLiteral("touring"), options.tour},
         {QStringLiteral("pictureDesk"), QVariant::fromValue<QObject *>(&pictureDesk)},
         {QStringLiteral("samples"), QVariant::fromValue<QObject *>(&samples)},
         {QStringLiteral("census"), QVariant::fromValue<QObject *>(census.get())},
         {QStringLiteral("desktop"), QVariant::fromValue<QObject *>(desktop.get())},
         {QStringLiteral("robot"), QVariant::fromValue<QObject *>(&robot)}});
    engine.load(QUrl(QStringLiteral("qrc:/chat/Main.qml")));
    if (engine.rootObjects().isEmpty())
        return 1;

    const int status = QApplication::exec();
    if (options.tour && WarningCounter::count() > 0) {
        std::fprintf(stderr, "chat: %d warnings during the tour\n", WarningCounter::count());
        return 1;
    }
    return status;
}
