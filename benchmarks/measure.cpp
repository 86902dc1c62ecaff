#include "measure.h"

#include <QStringList>
#include <QTextStream>

#include <algorithm>
#include <cstdio>

namespace {

QString number(double value)
{
    return QString::number(value, 'f', value >= 100.0 ? 0 : value >= 10.0 ? 1 : value >= 0.1 ? 2 : 4);
}

void print(const QString &line)
{
    QTextStream(stdout) << line << '\n' << Qt::flush;
}

} // namespace

double median(QVector<double> samples)
{
    std::sort(samples.begin(), samples.end());
    const int middle = samples.size() / 2;
    return samples.size() % 2 == 1 ? samples.at(middle) : (samples.at(middle - 1) + samples.at(middle)) / 2.0;
}

bool measure(const Row &row)
{
    QVector<QVector<double>> samples(row.contenders.size());
    // The first round warms caches of fonts, glyphs and pictures up, and does not count.
    for (int round = -1; round < row.rounds; ++round) {
        for (int turn = 0; turn < row.contenders.size(); ++turn) {
            // Up and down again, so that nobody always finds the heap as the same neighbour left it.
            const int i = round % 2 == 0 ? turn : row.contenders.size() - 1 - turn;
            const double cost = row.contenders.at(i).once();
            if (round >= 0)
                samples[i].append(cost);
        }
    }
    QVector<double> medians;
    QStringList costs;
    for (int i = 0; i < samples.size(); ++i) {
        medians.append(median(samples.at(i)));
        costs.append(
            QStringLiteral("%1 %2 %3").arg(row.contenders.at(i).name, number(medians.at(i)), row.unit));
    }

    bool isMet = true;
    QStringList verdicts;
    for (const Target &target : row.targets) {
        const double ratio = medians.at(0) / medians.at(target.peer);
        const bool met = ratio <= target.share;
        isMet = isMet && met;
        verdicts.append(QStringLiteral("%1x %2 (at most %3x): %4")
                            .arg(number(ratio), row.contenders.at(target.peer).name,
                                 QString::number(target.share),
                                 met ? QStringLiteral("met") : QStringLiteral("MISSED")));
    }
    if (row.limit >= 0.0) {
        const bool met = medians.at(0) <= row.limit;
        const bool decided = met || row.control < 0 || medians.at(row.control) <= row.limit;
        isMet = isMet && (met || !decided);
        const QString verdict = !decided ? QStringLiteral("undecided, the machine is too busy")
                                : met    ? QStringLiteral("met")
                                         : QStringLiteral("MISSED");
        verdicts.append(
            QStringLiteral("at most %1 %2: %3").arg(QString::number(row.limit), row.unit, verdict));
    }
    print(QStringLiteral("| %1 | %2 | %3 |")
              .arg(row.title, costs.join(QStringLiteral("<br>")), verdicts.join(QStringLiteral("<br>"))));
    return isMet;
}

void printHead()
{
    print(QStringLiteral("| What | Median | Target |\n|---|---|---|"));
}
