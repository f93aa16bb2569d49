#pragma once

namespace kavro {

class KVRMediaList;

// Told when a scan has published its result. Called on the scan's own thread (a pool thread for
// a background scan), so an implementation that touches widgets must hop to the main thread.
class KVRMediaListDelegate
{
public:
    virtual ~KVRMediaListDelegate() = default;
    virtual void mediaListChanged(KVRMediaList* list) = 0;
};

} // namespace kavro
