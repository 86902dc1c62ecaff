#include "placeholders.h"

const QChar emojiPlaceholder = QChar(0xEEEE);
const QChar tabPlaceholder = QChar(0xEEEF);
