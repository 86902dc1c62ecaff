#include "componentplugin.h"

#include "registration.h"

#include <emoji/placeholderfont.h>

void ComponentPlugin::registerTypes(const char *uri)
{
    // Before the first item of the module can make Qt resolve a font: what it resolved before, it keeps.
    emoji::registerPlaceholderFont();
    component::registerAll(uri);
}
