#pragma once

#include <QMutex>
#include <QObject>
#include <QSet>
#include <QStringList>
#include <QTimer>

/// Knows which classes and which QML documents have had a living object since it was made. It sees every
/// object of the GUI thread that lives for 20 milliseconds or longer, whoever owns it. One at a time.
class TypeCensus : public QObject
{
    Q_OBJECT

public:
    explicit TypeCensus(QObject *parent = nullptr);
    ~TypeCensus() override;

    /// Those of `wanted`, names of classes and URLs of documents, that have had no object yet.
    [[nodiscard]] Q_INVOKABLE QStringList missing(const QStringList &wanted) const;

private:
    void count();

    static void added(QObject *object);
    static void removed(QObject *object);

    QMutex mutex;
    QSet<QObject *> newcomers; ///< not counted yet
    QSet<QString> seen;
    QTimer timer;
};
