#include "qxtversion.h"

const char *qxtVersion()
{
    return "0.7.0";
}
