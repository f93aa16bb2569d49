#include "kvrformatter.h"

namespace kavro {

KVRFormatter::~KVRFormatter() = default;

} // namespace kavro
