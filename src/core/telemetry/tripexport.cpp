#include "tripexport.h"

#include "common/jsonwriter.h"
#include "common/xmlwriter.h"
#include "telemetryexport.h"

#include <memory>
#include <utility>

namespace kavro {

using namespace exportpart;

namespace {

// One format's document, told the drives and recordings in order.
class DocumentWriter
{
public:
    explicit DocumentWriter(const TripPlan& plan) : m_plan(plan) {}
    virtual ~DocumentWriter() = default;
    virtual void beginDrive(const TripPlan::Drive&) {}
    virtual void recording(const TripPlan::Recording& recording, const KVRBlackBoxData& store) = 0;
    virtual void endDrive() {}
    virtual void end() = 0;
    virtual std::string takePending() = 0;

protected:
    // A drive's label: its start, or the file name for a recording without a time.
    std::string driveName(const TripPlan::Drive& drive) const
    {
        const RecordingName& first = m_plan.recordings()[drive.first].media;
        const std::string start = TripPlan::startText(first, ' ');
        return start.empty() ? first.fileName() : start;
    }
    std::string driveFiles(const TripPlan::Drive& drive) const
    {
        std::string files;
        for (std::size_t i = drive.first; i < drive.first + drive.count; ++i)
            files += (files.empty() ? "" : ", ") + m_plan.recordings()[i].media.fileName();
        return files;
    }

    const TripPlan& m_plan;
};

// GPX and KML alike: a drive is an element with its start as name and its files as description.
class XmlDocument : public DocumentWriter
{
public:
    XmlDocument(const TripPlan& plan, void (*begin)(XmlWriter&), const char* driveElement,
                const char* descriptionElement)
        : DocumentWriter(plan), m_driveElement(driveElement),
          m_descriptionElement(descriptionElement)
    {
        begin(m_xml);
    }
    void beginDrive(const TripPlan::Drive& drive) override
    {
        m_xml.startElement(m_driveElement);
        m_xml.textElement("name", xmlSafe(driveName(drive)));
        m_xml.textElement(m_descriptionElement, xmlSafe(driveFiles(drive)));
    }
    void endDrive() override { m_xml.endElement(); }
    void end() override { m_xml.endDocument(); }
    std::string takePending() override { return m_xml.takePending(); }

protected:
    XmlWriter m_xml;

private:
    const char* m_driveElement;
    const char* m_descriptionElement;
};

class GpxDocument final : public XmlDocument
{
public:
    explicit GpxDocument(const TripPlan& plan) : XmlDocument(plan, beginGpx, "trk", "desc") {}
    void recording(const TripPlan::Recording&, const KVRBlackBoxData& store) override
    {
        writeGpxSegment(m_xml, routePoints(store));
    }
};

class KmlDocument final : public XmlDocument
{
public:
    explicit KmlDocument(const TripPlan& plan)
        : XmlDocument(plan, beginKml, "Folder", "description")
    {
    }
    void recording(const TripPlan::Recording& recording, const KVRBlackBoxData& store) override
    {
        m_xml.startElement("Placemark");
        m_xml.textElement("name", xmlSafe(recording.media.fileName()));
        writeKmlGeometry(m_xml, routePoints(store));
        m_xml.endElement();
    }
};

class GeoJsonDocument final : public DocumentWriter
{
public:
    explicit GeoJsonDocument(const TripPlan& plan) : DocumentWriter(plan)
    {
        m_json.beginObject();
        m_json.key("type");
        m_json.value("FeatureCollection");
        m_json.key("features");
        m_json.beginArray();
    }
    void recording(const TripPlan::Recording& recording, const KVRBlackBoxData& store) override
    {
        const RecordingName& media = recording.media;
        m_json.beginObject();
        m_json.key("type");
        m_json.value("Feature");
        m_json.key("properties");
        m_json.beginObject(JsonWriter::Layout::Inline);
        m_json.key("file");
        m_json.value(media.fileName());
        m_json.key("mode");
        m_json.value(TripPlan::modeWord(media));
        m_json.key("start");
        if (media.hasTime())
            m_json.value(TripPlan::startText(media, 'T'));
        else
            m_json.null();
        m_json.key("drive");
        m_json.value(recording.drive);
        m_json.endObject();
        m_json.key("geometry");
        writeGeoJsonGeometry(m_json, routePoints(store));
        m_json.endObject();
    }
    void end() override
    {
        m_json.endArray();
        m_json.endObject();
    }
    std::string takePending() override { return m_json.takePending(); }

private:
    JsonWriter m_json;
};

class JsonDocument final : public DocumentWriter
{
public:
    explicit JsonDocument(const TripPlan& plan) : DocumentWriter(plan) { m_json.beginArray(); }
    void recording(const TripPlan::Recording& recording, const KVRBlackBoxData& store) override
    {
        const std::string file = recording.media.fileName();
        writeTelemetryObject(m_json, store, &file);
    }
    void end() override { m_json.endArray(); }
    std::string takePending() override { return m_json.takePending(); }

private:
    JsonWriter m_json;
};

class CsvDocument final : public DocumentWriter
{
public:
    explicit CsvDocument(const TripPlan& plan) : DocumentWriter(plan), m_out(csvHeader(true)) {}
    void recording(const TripPlan::Recording& recording, const KVRBlackBoxData& store) override
    {
        const std::string prefix = csvField(recording.media.fileName()) + ',';
        appendCsvLines(m_out, store, prefix);
    }
    void end() override {}
    std::string takePending() override { return std::exchange(m_out, std::string()); }

private:
    std::string m_out;
};

std::unique_ptr<DocumentWriter> documentFor(TripExport::Format format, const TripPlan& plan)
{
    switch (format) {
    case TripExport::Format::Csv:
        return std::make_unique<CsvDocument>(plan);
    case TripExport::Format::Gpx:
        return std::make_unique<GpxDocument>(plan);
    case TripExport::Format::GeoJson:
        return std::make_unique<GeoJsonDocument>(plan);
    case TripExport::Format::Kml:
        return std::make_unique<KmlDocument>(plan);
    case TripExport::Format::Json:
        break;
    }
    return std::make_unique<JsonDocument>(plan);
}

} // namespace

TripExport::TripExport(const TripPlan& plan, Format format, const TelemetryReadOptions& options)
    : m_plan(plan), m_format(format), m_options(options)
{
}

bool TripExport::write(const Sink& sink, const Progress& progress, const Refusal& refusal)
{
    const std::unique_ptr<DocumentWriter> document = documentFor(m_format, m_plan);
    KVRBlackBoxData store;
    std::size_t done = 0;
    for (const TripPlan::Drive& drive : m_plan.drives()) {
        document->beginDrive(drive);
        for (std::size_t i = drive.first; i < drive.first + drive.count; ++i) {
            const TripPlan::Recording& recording = m_plan.recordings()[i];
            const std::string& path = recording.media.path();
            if (!readTelemetry(store, path, m_options)) {
                store.clear();
                if (refusal)
                    refusal({path, "cannot read " + path});
            } else if (store.recovered() && m_recoveryNotice) {
                m_recoveryNotice(path);
            }
            document->recording(recording, store);
            if (!sink(document->takePending()))
                return false;
            if (progress)
                progress(++done);
        }
        document->endDrive();
    }
    document->end();
    return sink(document->takePending());
}

} // namespace kavro
