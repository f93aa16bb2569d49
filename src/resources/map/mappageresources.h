#pragma once

namespace kavro {

// Registers the map page and Leaflet under ":/map". The resource data lives in a static library,
// whose registration the linker would drop unless something calls into it; this does. Safe to
// call more than once.
void initMapPageResources();

} // namespace kavro
