#pragma once

#include <QtGlobal>

#ifdef EMOJI_BUILD
#define EMOJI_EXPORT Q_DECL_EXPORT
#else
#define EMOJI_EXPORT Q_DECL_IMPORT
#endif
