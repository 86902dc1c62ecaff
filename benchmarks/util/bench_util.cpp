// What scripts call all the time, at its largest, and the module's import in fresh processes.

#include "measure.h"

#include "util/clipboard.h"
#include "util/imutil.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTextStream>

#include <cmath>
#include <functional>

namespace {

constexpr double mebibyte = 1024.0 * 1024.0;

double milliseconds(const QElapsedTimer &timer)
{
    return double(timer.nsecsElapsed()) / 1e6;
}

double timed(const std::function<void()> &work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return milliseconds(timer);
}

/// The bytes that this process has asked the system to read so far; NaN where it does not count them.
double bytesRead()
{
    QFile io(QStringLiteral("/proc/self/io"));
    if (!io.open(QIODevice::ReadOnly))
        return std::nan("");
    return io.readLine().split(' ').last().trimmed().toDouble();
}

/// What an office program puts on the clipboard: a head full of styles, then paragraphs in nested spans.
QString officeHtml(int length)
{
    const QString style = QStringLiteral(
        "<html xmlns:o=\"urn:schemas-microsoft-com:office:office\"><head><meta charset=\"utf-8\"><style>\n"
        "p.MsoNormal, li.MsoNormal, div.MsoNormal {margin:0cm; font-size:10.5pt; font-family:\"Calibri\";}\n"
        "</style><xml><o:OfficeDocumentSettings><o:AllowPNG/></o:OfficeDocumentSettings></xml></"
        "head><body>\n");
    const QString paragraph = QStringLiteral(
        "<p class=MsoNormal style='margin-left:21.0pt;text-indent:-21.0pt;line-height:150%'>"
        "<span lang=EN-US style='font-size:12.0pt;mso-fareast-font-family:SimSun'>A line of text, "
        "<b style='mso-bidi-font-weight:normal'><i>emphasised</i></b>&nbsp;and linked to <a "
        "href=\"https://example.org/a/page?with=parameters&amp;more\"><span style='color:#0563C1'>a "
        "page</span></a>.<o:p></o:p></span><img width=20 height=20 src=\"file:///C:/a.png\"></p><br />\n");
    QString html = style;
    html.reserve(length + paragraph.size());
    while (html.size() < length)
        html += paragraph;
    return html;
}

class UtilBenchmarks
{
public:
    /// Runs the rows whose titles hold `wanted`.
    bool run(const QString &wanted)
    {
        printHead();
        for (const Row &row : {hashTime(), hashBytes(), officeTime(), officeGrowth(), hostileGrowth(),
                               folderSize(), importAndItem(), importAlone()}) {
            if (row.title.contains(wanted, Qt::CaseInsensitive) && !measure(row))
                allMet = false;
        }
        return allMet;
    }

private:
    QString sparseFile(const QString &name, qint64 size) const
    {
        QFile file(temporary.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || !file.resize(size))
            qFatal("a file of %lld bytes can not be made", size);
        return file.fileName();
    }

    Row hashTime()
    {
        const QString large = sparseFile(QStringLiteral("large"), Q_INT64_C(4) << 30);
        const QString small = sparseFile(QStringLiteral("small"), Q_INT64_C(5) << 20);
        Row row;
        row.title = QStringLiteral("sha1UpgradeFile of 4 GiB");
        row.unit = QStringLiteral("ms");
        row.contenders = {
            {QStringLiteral("4 GiB"), [=] { return timed([&] { ImUtil().sha1UpgradeFile(large); }); }},
            {QStringLiteral("5 MiB"), [=] { return timed([&] { ImUtil().sha1UpgradeFile(small); }); }},
        };
        row.targets = {{1, 1.25}};
        row.rounds = 15;
        return row;
    }

    Row hashBytes()
    {
        const QString large = sparseFile(QStringLiteral("large"), Q_INT64_C(4) << 30);
        Row row;
        row.title = QStringLiteral("sha1UpgradeFile of 4 GiB, read for it");
        row.unit = QStringLiteral("MiB");
        row.contenders = {{QStringLiteral("4 GiB"), [=] {
                               const double before = bytesRead();
                               ImUtil().sha1UpgradeFile(large);
                               return (bytesRead() - before) / mebibyte;
                           }}};
        row.limit = 5;
        row.rounds = 1;
        return row;
    }

    static Contender filtered(const QString &name, const QString &html, int times = 1)
    {
        return {name, [=] {
                    return timed([&] {
                        Clipboard clipboard;
                        for (int i = 0; i < times; ++i)
                            clipboard.filterHtml(html);
                    });
                }};
    }

    static Row officeTime()
    {
        Row row;
        row.title = QStringLiteral("filterHtml of 1 MB from an office program");
        row.unit = QStringLiteral("ms");
        row.contenders = {filtered(QStringLiteral("1 MB"), officeHtml(1000000))};
        row.limit = 50;
        return row;
    }

    static Row officeGrowth()
    {
        Row row;
        row.title = QStringLiteral("filterHtml of 8 MB against sixteen times 0.5 MB");
        row.unit = QStringLiteral("ms");
        row.contenders = {filtered(QStringLiteral("8 MB"), officeHtml(8000000)),
                          filtered(QStringLiteral("16 x 0.5 MB"), officeHtml(500000), 16)};
        row.targets = {{1, 1.5}};
        return row;
    }

    static Row hostileGrowth()
    {
        const QString piece = QStringLiteral("<style><img src=image://emojicache/QUFB<");
        Row row;
        row.title = QStringLiteral("filterHtml of 8 MB of tags that never end, against sixteen times 0.5 MB");
        row.unit = QStringLiteral("ms");
        row.contenders = {filtered(QStringLiteral("8 MB"),
                                   QString(7, QLatin1Char('a')) + piece.repeated(8000000 / piece.size())),
                          filtered(QStringLiteral("16 x 0.5 MB"),
                                   QString(7, QLatin1Char('a')) + piece.repeated(500000 / piece.size()), 16)};
        row.targets = {{1, 1.5}};
        return row;
    }

    Row folderSize()
    {
        const QString root = temporary.filePath(QStringLiteral("tree"));
        constexpr int folders = 200;
        constexpr int filesEach = 100;
        for (int folder = 0; folder < folders; ++folder) {
            // Ten levels deep, as project folders are.
            QString path = root;
            for (int digit = folder; digit > 0; digit /= 2)
                path += QStringLiteral("/%1").arg(digit % 2);
            path += QStringLiteral("/folder %1").arg(folder);
            QDir().mkpath(path);
            for (int number = 0; number < filesEach; ++number) {
                QFile file(QStringLiteral("%1/a file %2.txt").arg(path).arg(number));
                if (!file.open(QIODevice::WriteOnly) || file.write(QByteArray(number * 3, 'x')) < 0)
                    qFatal("the folder's files can not be made");
            }
        }
        Row row;
        row.title = QStringLiteral("dirSize of 20,000 files");
        row.unit = QStringLiteral("ms");
        row.contenders = {{QStringLiteral("dirSize"), [=] { return timed([&] { ImUtil().dirSize(root); }); }},
                          {QStringLiteral("du"), [=] {
                               return timed([&] {
                                   QProcess du;
                                   du.setStandardOutputFile(QProcess::nullDevice());
                                   du.start(QStringLiteral("du"), {QStringLiteral("-sb"), root});
                                   if (!du.waitForFinished() || du.exitCode() != 0)
                                       qFatal("du is needed");
                               });
                           }}};
        row.targets = {{1, 1.5}};
        row.rounds = 21;
        return row;
    }

    /// A fresh process that imports and makes one item, by its own clock.
    static Contender imported(const QString &name, const QString &document)
    {
        return {name, [=] {
                    QProcess host;
                    host.start(QCoreApplication::applicationDirPath() + QStringLiteral("/import_host"),
                               {document});
                    if (!host.waitForFinished() || host.exitCode() != 0)
                        qFatal("%s: %s", qPrintable(name), host.readAllStandardError().constData());
                    return host.readAllStandardOutput().trimmed().toDouble() / 1000.0;
                }};
    }

    /// What loading alone takes. Without a target: the module adds a font when it is loaded, which makes Qt
    /// read the system's fonts; Controls leave that to their first text.
    static Row importAlone()
    {
        Row row;
        row.title = QStringLiteral("Import without an item of the module's own");
        row.unit = QStringLiteral("ms");
        row.contenders = {
            imported(QStringLiteral("component"),
                     QStringLiteral("import QtQuick 2.15\nimport com.ostrel.im.component 1.0\nItem {}")),
            imported(QStringLiteral("QtQuick.Controls"),
                     QStringLiteral("import QtQuick 2.15\nimport QtQuick.Controls 2.15\nItem {}"))};
        row.rounds = 31;
        return row;
    }

    static Row importAndItem()
    {
        Row row;
        row.title = QStringLiteral("Import until the first item exists");
        row.unit = QStringLiteral("ms");
        row.contenders = {
            imported(QStringLiteral("component, DrawableText"),
                     QStringLiteral(
                         "import com.ostrel.im.component 1.0\nDrawableText { maxWidth: 100; text: \"a\" }")),
            imported(QStringLiteral("QtQuick.Controls, Label"),
                     QStringLiteral("import QtQuick.Controls 2.15\nLabel { width: 100; text: \"a\" }"))};
        row.targets = {{1, 1.3}};
        row.rounds = 31;
        return row;
    }

    QTemporaryDir temporary;
    bool allMet = true;
};

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    return UtilBenchmarks().run(application.arguments().value(1)) ? 0 : 1;
}
