#pragma once

#include "kvrmedia.h"

namespace kavro {

// The front and rear recording of one moment, filed under their shared group name. Either slot
// may be empty when the partner file is missing. A small value: copies share the records.
class KVRMediaPair
{
public:
    const KVRMediaPtr& frontMedia() const { return m_frontMedia; }
    const KVRMediaPtr& rearMedia() const { return m_rearMedia; }
    void setFrontMedia(KVRMediaPtr media) { m_frontMedia = std::move(media); }
    void setRearMedia(KVRMediaPtr media) { m_rearMedia = std::move(media); }

    // The record of the other channel: rear for a front record, front for a rear one; empty for
    // a record of unknown channel or a missing partner.
    KVRMediaPtr partnerOf(const KVRMedia& media) const;

private:
    KVRMediaPtr m_frontMedia;
    KVRMediaPtr m_rearMedia;
};

} // namespace kavro
