#include "componentplugin.h"

#include "registration.h"

void ComponentPlugin::registerTypes(const char *uri)
{
    component::registerAll(uri);
}
