#include "resources/kavroresources.h"

#include <QtGlobal>

// Q_INIT_RESOURCE must be used outside any namespace.
static bool registerKavroImages()
{
    Q_INIT_RESOURCE(kavro_images);
    return true;
}

namespace kavro {

void initImageResources()
{
    static const bool registered = registerKavroImages();
    Q_UNUSED(registered);
}

} // namespace kavro
