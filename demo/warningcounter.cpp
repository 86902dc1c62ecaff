#include "warningcounter.h"

#include <QByteArray>
#include <QLoggingCategory>

#include <atomic>

namespace {

std::atomic<int> warnings{0};
QtMessageHandler printer = nullptr;

void countAndPrint(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    // The platform plugin's complaints are about the machine, not about the demo.
    const bool ofPlatform = QByteArray(context.category).startsWith("qt.qpa");
    if (type != QtDebugMsg && type != QtInfoMsg && !ofPlatform)
        ++warnings;
    printer(type, context, message);
}

} // namespace

void WarningCounter::install()
{
    printer = qInstallMessageHandler(countAndPrint);
}

int WarningCounter::count()
{
    return warnings;
}
