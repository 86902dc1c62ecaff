#include "registration.h"

#include "colortheme/imagecolortheme.h"
#include "image/circleprogress.h"
#include "image/drawableimage.h"
#include "image/imagepreviewer.h"
#include "image/imagerender.h"
#include "image/roundedimage.h"
#include "image/roundedrectitem.h"
#include "text/drawabletext.h"
#include "textarea/drawabletextarea.h"
#include "util/clipboard.h"
#include "util/eventloop.h"
#include "util/imutil.h"
#include "util/syntaxhighlighter.h"
#include "window/autostart.h"
#include "window/framelesswindow.h"
#include "window/popupwindow.h"
#include "window/qxtglobalshortcut.h"
#include "window/screencapture.h"
#include "window/scrollcontroller.h"
#include "window/systemtrayicon.h"

#ifdef COMPONENT_WEBSOCKET
#include "util/websocket.h"
#endif

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
void singleton(const char *uri, const char *qmlName)
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
// clang-format off: one row a line
constexpr Registration table[] = {
    {nullptr, revision<QWindow, 10>},
    {"FramelessWindow", creatable<FramelessWindow>},
    {"PopupWindow", creatable<PopupWindow>},
    {"ScreenCapture", creatable<ScreenCapture>},
#ifdef COMPONENT_WEBSOCKET
    {"WebSocket", creatable<WebSocket>},
#endif
    {"EventLoop", creatable<EventLoop>},
    {"SystemTrayIcon", creatable<SystemTrayIcon>},
    {"SyntaxHighlighter", creatable<SyntaxHighlighter>},
    {"QxtGlobalShortcut", creatable<QxtGlobalShortcut>},
    {"DrawableText", creatable<DrawableText>},
    {"DrawableTextArea", creatable<DrawableTextArea>},
    {"DrawableImage", creatable<DrawableImage>},
    {nullptr, revision<QQuickTextArea, 1>},
    {nullptr, revision<QQuickTextEdit, 7>},
    {nullptr, revision<QQuickWindow, 6>},
    {"RoundedImage", creatable<RoundedImage>},
    {"RoundedRectItem", creatable<RoundedRectItem>},
    {"ImageRender", creatable<ImageRender>},
    {"ImagePreviewer", creatable<ImagePreviewer>},
    {"CircleProgress", creatable<CircleProgress>},
    {"ImageColorTheme", creatable<ImageColorTheme>},
    {"ScrollController", creatable<ScrollController>},
    {"Clipboard", singleton<Clipboard>},
    {"ImUtil", singleton<ImUtil>},
    {"EventLoopCreator", singleton<EventLoopCreator>},
    {"AutoStart", singleton<AutoStart>},
};
// clang-format on

} // namespace

void registerAll(const char *uri)
{
    for (const Registration &row : table)
        row.registerUnder(uri, row.qmlName);
}

} // namespace component
