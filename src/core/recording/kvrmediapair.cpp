#include "kvrmediapair.h"

namespace kavro {

KVRMediaPtr KVRMediaPair::partnerOf(const KVRMedia& media) const
{
    if (media.isFrontMedia())
        return m_rearMedia;
    if (media.isRearMedia())
        return m_frontMedia;
    return nullptr;
}

} // namespace kavro
