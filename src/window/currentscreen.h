#pragma once

class QScreen;

/// The screen where the user works: the application's dynamic property "currentScreen". `FramelessWindow`
/// writes it, each new window of the module opens there.
namespace currentscreen {

/// Null when no window has told yet, or when that screen has gone.
[[nodiscard]] QScreen *get();
void set(QScreen *screen);

} // namespace currentscreen
