#pragma once

#include <optional>
#include <string>

namespace kavro {

class KVRBlackBoxData;

// What a document of many recordings needs to know of a file before it reads the telemetry:
// whether the telemetry reader takes the file at all, and the recording's length by its AVI
// header. Reads the first 88 bytes and two words, never the stream data.
class RecordingProbe
{
public:
    enum class Status
    {
        Readable,
        CannotOpen,
        NotAvi,
    };

    static RecordingProbe probe(const std::string& path);

    Status status() const { return m_status; }
    // Why the file could not be opened, as the system says it.
    const std::string& openError() const { return m_openError; }
    // Total frames times the time per frame from the main header. Empty when the header gives no
    // frames or no rate, or when the index is not where the header's stream list says it ends:
    // such a file was cut short and its header describes what the camera meant to write.
    std::optional<double> headerSeconds() const { return m_headerSeconds; }

    // The time from the first telemetry sample or record to the last, by the camera's clock;
    // empty when the store holds neither.
    static std::optional<double> telemetrySeconds(const KVRBlackBoxData& store);

private:
    Status m_status = Status::CannotOpen;
    std::string m_openError;
    std::optional<double> m_headerSeconds;
};

} // namespace kavro
