#pragma once

namespace kavro {

// Registers the compiled-in images under ":/images". The resource data lives in a static
// library, whose registration the linker would drop unless something calls into it; this does.
// Safe to call more than once.
void initImageResources();

} // namespace kavro
