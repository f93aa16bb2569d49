#include "resources/map/mappageresources.h"

#include <QtGlobal>

// Q_INIT_RESOURCE must be used outside any namespace.
static bool registerKavroMapPage()
{
    Q_INIT_RESOURCE(kavro_map);
    return true;
}

namespace kavro {

void initMapPageResources()
{
    static const bool registered = registerKavroMapPage();
    Q_UNUSED(registered);
}

} // namespace kavro
