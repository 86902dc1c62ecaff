#pragma once

#include <QQmlExtensionPlugin>

/// The entry that the QML engine loads for `import com.ostrel.im.component 1.0`.
class ComponentPlugin : public QQmlExtensionPlugin
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID QQmlExtensionInterface_iid)

public:
    /// Registers all types of the module under `uri`, the name by which the engine imported it.
    void registerTypes(const char *uri) override;
};
