// The plugin lies in the test itself, where the image reader finds it beside those of the system.
#define QT_STATICPLUGIN

#include "gateimage.h"

#include <QColor>
#include <QFile>
#include <QImage>
#include <QImageIOHandler>
#include <QImageIOPlugin>
#include <QMutex>
#include <QWaitCondition>
#include <QtPlugin>

namespace {

const char magic[] = "GATE";

struct Gate
{
    QMutex mutex;
    QWaitCondition changed;
    bool isOpen = true;
    int arrived = 0;
    int finished = 0;
} gate;

class GateHandler : public QImageIOHandler
{
public:
    bool canRead() const override { return device()->peek(4) == QByteArray(magic); }

    bool read(QImage *image) override
    {
        QMutexLocker lock(&gate.mutex);
        ++gate.arrived;
        gate.changed.wakeAll();
        while (!gate.isOpen)
            gate.changed.wait(&gate.mutex);
        *image = QImage(8, 8, QImage::Format_RGB32);
        image->fill(QColor(200, 30, 30));
        ++gate.finished;
        return true;
    }
};

} // namespace

class GatePlugin : public QImageIOPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QImageIOHandlerFactoryInterface_iid FILE "gateimage.json")

public:
    Capabilities capabilities(QIODevice *device, const QByteArray &) const override
    {
        return device && device->isReadable() && device->peek(4) == QByteArray(magic) ? CanRead
                                                                                      : Capabilities();
    }

    QImageIOHandler *create(QIODevice *device, const QByteArray &format) const override
    {
        auto *handler = new GateHandler;
        handler->setDevice(device);
        handler->setFormat(format);
        return handler;
    }
};

#include "gateimage.moc"

Q_IMPORT_PLUGIN(GatePlugin)

namespace gateimage {

void close()
{
    const QMutexLocker lock(&gate.mutex);
    gate.isOpen = false;
    gate.arrived = 0;
    gate.finished = 0;
}

void open()
{
    const QMutexLocker lock(&gate.mutex);
    gate.isOpen = true;
    gate.changed.wakeAll();
}

bool waitForReader()
{
    QMutexLocker lock(&gate.mutex);
    while (gate.arrived == 0) {
        if (!gate.changed.wait(&gate.mutex, 10'000))
            return false;
    }
    return true;
}

int finishedReaders()
{
    const QMutexLocker lock(&gate.mutex);
    return gate.finished;
}

bool write(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(magic) == 4;
}

} // namespace gateimage
