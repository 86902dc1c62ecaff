#include "registration.h"

#include "text/drawabletext.h"

#include <QQuickWindow>
#include <QWindow>
#include <qqml.h>

#include <QtQuickTemplates2/private/qquicktextarea_p.h>
#include <private/qquicktextedit_p.h>

namespace component {
namespace {

constexpr int majorVersion = 1;
constexpr int minorVersion = 0;

struct Registration
{
    const char *qmlName; ///< null where a row only makes members of a base class visible
    void (*registerUnder)(const char *uri, const char *qmlName);
};

template <typename Type>
void creatable(const char *uri, const char *qmlName)
{
    qmlRegisterType<Type>(uri, majorVersion, minorVersion, qmlName);
}

/// One instance per engine, made by the engine on first use and owned by it.
template <typename Type>
[[maybe_unused]] void singleton(const char *uri, const char *qmlName)
{
    qmlRegisterSingletonType<Type>(uri, majorVersion, minorVersion, qmlName,
                                   [](QQmlEngine *, QJSEngine *) -> QObject * { return new Type(nullptr); });
}

/// Shows the members of one of Qt's own base classes up to `Revision` to items of this module that derive
/// from it. With a smaller number, properties that the client's QML sets on them would be unknown.
template <typename Type, int Revision>
void revision(const char *uri, const char *)
{
    qmlRegisterRevision<Type, Revision>(uri, majorVersion, minorVersion);
}

// The order of the rows is part of the interface.
constexpr Registration table[] = {
    {nullptr, revision<QWindow, 10>},       {"DrawableText", creatable<DrawableText>},
    {nullptr, revision<QQuickTextArea, 1>}, {nullptr, revision<QQuickTextEdit, 7>},
    {nullptr, revision<QQuickWindow, 6>},
};

} // namespace

void registerAll(const char *uri)
{
    for (const Registration &row : table)
        row.registerUnder(uri, row.qmlName);
}

} // namespace component
