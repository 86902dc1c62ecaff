#pragma once

#include <memory>

#include <cstdlib>

struct xcb_connection_t;

/// The application's own connection to the X server.
namespace xcbconnection {

/// Null where the application does not run on X11.
[[nodiscard]] xcb_connection_t *get();

/// The root window of the primary screen.
[[nodiscard]] unsigned int rootWindow();

struct FreeDeleter
{
    void operator()(void *reply) const { std::free(reply); }
};

/// A reply or an error of the server. Every reply can be null: the window it asks about may have gone.
template <typename Type>
using Reply = std::unique_ptr<Type, FreeDeleter>;

} // namespace xcbconnection
