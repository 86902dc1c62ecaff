#pragma once

#include <QtGlobal>

/// Version of the hot-key interface that `QxtGlobalShortcut` offers. Exported by the library under this name.
extern "C" Q_DECL_EXPORT const char *qxtVersion();
