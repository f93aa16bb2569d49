#include "kvraviwriter.h"

#include "aviformat.h"
#include "common/corelog.h"

#include "common/outputfile.h"
#include <QtEndian>

#include <algorithm>
#include <array>
#include <limits>
#include <numeric>
#include <vector>

namespace kavro {

namespace {

// AVI 1.0 keeps every size and index offset in 32 bits.
constexpr std::uint64_t MaxFileSize = std::numeric_limits<std::uint32_t>::max();

constexpr std::uint32_t AvifHasIndex = 0x10;
constexpr std::uint32_t AvifIsInterleaved = 0x100;
constexpr std::uint32_t AviifKeyFrame = 0x10;

// Everything up to and including the "movi" list type.
constexpr std::uint32_t HeaderSize = avi::MoviTypeOffset + 4;

enum Stream
{
    VideoStream,
    AudioStream,
    TelemetryStream,
    StreamCount
};

struct StreamStats
{
    std::uint64_t chunks = 0;
    std::uint64_t bytes = 0;
    std::uint32_t largest = 0;
};

struct IndexEntry
{
    std::array<char, 4> id;
    std::uint32_t flags;
    std::uint32_t offset;
    std::uint32_t size;
};

// Little-endian building of RIFF structures; chunk sizes are filled in when a chunk ends.
class RiffBuilder
{
public:
    void u16(std::uint16_t value) { append(qToLittleEndian(value)); }
    void u32(std::uint32_t value) { append(qToLittleEndian(value)); }
    void i16(std::int16_t value) { append(qToLittleEndian(value)); }
    void fourcc(const char* id) { m_bytes.append(id, 4); }
    void fourcc(const QByteArray& id) { m_bytes.append(id.leftJustified(4, ' ', true)); }

    void beginChunk(const char* id)
    {
        fourcc(id);
        m_open.push_back(m_bytes.size());
        u32(0);
    }
    void beginList(const char* type)
    {
        beginChunk("LIST");
        fourcc(type);
    }
    void end()
    {
        const qsizetype sizeAt = m_open.back();
        m_open.pop_back();
        const auto size = static_cast<std::uint32_t>(m_bytes.size() - sizeAt - 4);
        qToLittleEndian(size, m_bytes.data() + sizeAt);
        if (size % 2 != 0)
            m_bytes.append('\0');
    }

    qsizetype size() const { return m_bytes.size(); }
    QByteArray& bytes() { return m_bytes; }

private:
    template <typename T> void append(T value)
    {
        m_bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
    }

    QByteArray m_bytes;
    std::vector<qsizetype> m_open;
};

// Reduces a rate so that both terms fit in 32 bits, keeping their ratio as well as possible.
std::pair<std::uint32_t, std::uint32_t> fitRate(std::uint64_t scale, std::uint64_t rate)
{
    const std::uint64_t common = std::gcd(scale, rate);
    if (common > 1) {
        scale /= common;
        rate /= common;
    }
    while (scale > std::numeric_limits<std::uint32_t>::max() ||
           rate > std::numeric_limits<std::uint32_t>::max()) {
        scale = std::max<std::uint64_t>(1, scale / 2);
        rate = std::max<std::uint64_t>(1, rate / 2);
    }
    return {static_cast<std::uint32_t>(scale), static_cast<std::uint32_t>(rate)};
}

std::uint16_t blockAlign(const KVRAviWriter::AudioFormat& audio)
{
    return static_cast<std::uint16_t>(
        std::max(1, audio.channels * ((audio.bitsPerSample + 7) / 8)));
}

std::uint32_t clamp32(std::uint64_t value)
{
    return static_cast<std::uint32_t>(
        std::min<std::uint64_t>(value, std::numeric_limits<std::uint32_t>::max()));
}

} // namespace

struct KVRAviWriter::Private
{
    Layout layout;
    OutputFile file;
    QString path;
    QString error;
    bool isOpen = false;
    bool failed = false;
    std::uint64_t position = 0; // file offset of the next chunk
    std::array<StreamStats, StreamCount> stats;
    std::vector<IndexEntry> index;

    struct StreamHeader
    {
        const char* type;
        QByteArray handler;
        std::uint32_t scale;
        std::uint32_t rate;
        std::uint32_t length;
        std::uint32_t sampleSize;
    };

    bool hasStream(Stream stream) const;
    StreamHeader streamHeader(Stream stream) const;
    std::uint32_t streamCount() const;
    double videoSeconds() const;
    void writeStreamList(RiffBuilder& riff, Stream stream) const;
    QByteArray header() const;
    bool write(const QByteArray& bytes);
    bool addChunk(Stream stream, const char* id, const QByteArray& data, bool keyFrame);
    bool fail(const QString& message);
    void discard();
};

bool KVRAviWriter::Private::hasStream(Stream stream) const
{
    switch (stream) {
    case VideoStream:
        return true;
    case AudioStream:
        return layout.audio.has_value();
    case TelemetryStream:
        return layout.telemetry;
    default:
        return false;
    }
}

std::uint32_t KVRAviWriter::Private::streamCount() const
{
    // The telemetry chunks are always "02sb", so a file without audio still needs a stream at
    // number 1: it gets an empty data stream rather than a silent audio track.
    if (layout.telemetry)
        return 3;
    return layout.audio ? 2 : 1;
}

double KVRAviWriter::Private::videoSeconds() const
{
    const VideoFormat& video = layout.video;
    if (video.fpsNumerator == 0)
        return 0;
    return static_cast<double>(stats[VideoStream].chunks) * video.fpsDenominator /
           video.fpsNumerator;
}

KVRAviWriter::Private::StreamHeader KVRAviWriter::Private::streamHeader(Stream stream) const
{
    const StreamStats& s = stats[stream];
    const VideoFormat& video = layout.video;
    if (stream == VideoStream)
        return {"vids",
                video.fourcc,
                std::max<std::uint32_t>(1, video.fpsDenominator),
                std::max<std::uint32_t>(1, video.fpsNumerator),
                clamp32(s.chunks),
                0};
    if (stream == AudioStream && layout.audio) {
        const std::uint16_t block = blockAlign(*layout.audio);
        return {"auds", {}, block, layout.audio->sampleRate * block, clamp32(s.bytes / block),
                block};
    }
    // Telemetry chunks have no clock of their own: spread them over the video's length so that
    // players see the recording's real duration.
    std::pair<std::uint32_t, std::uint32_t> rate{1, 10};
    if (s.chunks > 0 && stats[VideoStream].chunks > 0 && video.fpsNumerator > 0)
        rate = fitRate(stats[VideoStream].chunks * std::max<std::uint32_t>(1, video.fpsDenominator),
                       s.chunks * video.fpsNumerator);
    return {"dats", {}, rate.first, rate.second, clamp32(s.chunks), 0};
}

void KVRAviWriter::Private::writeStreamList(RiffBuilder& riff, Stream stream) const
{
    const StreamHeader header = streamHeader(stream);
    const VideoFormat& video = layout.video;
    const bool isVideo = stream == VideoStream;
    riff.beginList("strl");
    riff.beginChunk("strh");
    riff.fourcc(header.type);
    if (header.handler.isEmpty())
        riff.u32(0);
    else
        riff.fourcc(header.handler);
    riff.u32(0); // flags
    riff.u16(0); // priority
    riff.u16(0); // language
    riff.u32(0); // initial frames
    riff.u32(header.scale);
    riff.u32(header.rate);
    riff.u32(0); // start
    riff.u32(header.length);
    riff.u32(stats[stream].largest);
    riff.u32(std::numeric_limits<std::uint32_t>::max()); // default quality
    riff.u32(header.sampleSize);                         // 0: chunks of any size
    riff.i16(0);                                         // frame rectangle
    riff.i16(0);
    riff.i16(isVideo ? static_cast<std::int16_t>(video.width) : 0);
    riff.i16(isVideo ? static_cast<std::int16_t>(video.height) : 0);
    riff.end();

    riff.beginChunk("strf");
    if (isVideo) {
        riff.u32(40); // BITMAPINFOHEADER
        riff.u32(video.width);
        riff.u32(video.height);
        riff.u16(1);  // planes
        riff.u16(24); // bits per pixel
        riff.fourcc(video.fourcc);
        riff.u32(video.width * video.height * 3);
        for (int i = 0; i < 4; ++i)
            riff.u32(0);
    } else if (stream == AudioStream && layout.audio) {
        const AudioFormat& audio = *layout.audio;
        riff.u16(audio.formatTag);
        riff.u16(audio.channels);
        riff.u32(audio.sampleRate);
        riff.u32(audio.sampleRate * blockAlign(audio));
        riff.u16(blockAlign(audio));
        riff.u16(audio.bitsPerSample);
        riff.u16(0); // no extra format bytes
    }
    riff.end();
    riff.end();
}

QByteArray KVRAviWriter::Private::header() const
{
    const std::uint64_t fileSize = position + 8 + index.size() * avi::IndexEntrySize;
    std::uint64_t largest = 0;
    std::uint64_t totalBytes = 0;
    for (const StreamStats& s : stats) {
        largest = std::max<std::uint64_t>(largest, s.largest);
        totalBytes += s.bytes;
    }
    const VideoFormat& video = layout.video;
    const double seconds = videoSeconds();

    RiffBuilder riff;
    riff.fourcc("RIFF");
    riff.u32(clamp32(fileSize - 8));
    riff.fourcc("AVI ");
    riff.beginList("hdrl");
    riff.beginChunk("avih");
    riff.u32(video.fpsNumerator == 0
                 ? 0
                 : clamp32(1000000ull * video.fpsDenominator / video.fpsNumerator));
    riff.u32(seconds > 0 ? clamp32(static_cast<std::uint64_t>(totalBytes / seconds)) : 0);
    riff.u32(0); // padding granularity
    riff.u32(AvifHasIndex | AvifIsInterleaved);
    riff.u32(clamp32(stats[VideoStream].chunks));
    riff.u32(0); // initial frames
    riff.u32(streamCount());
    riff.u32(clamp32(largest));
    riff.u32(video.width);
    riff.u32(video.height);
    for (int i = 0; i < 4; ++i)
        riff.u32(0);
    riff.end();
    for (std::uint32_t stream = 0; stream < streamCount(); ++stream)
        writeStreamList(riff, static_cast<Stream>(stream));
    riff.end();

    // Pad with a JUNK chunk so that the stream data always starts at the same offset.
    riff.fourcc("JUNK");
    const qsizetype junk = avi::MoviListOffset - riff.size() - 4;
    riff.u32(static_cast<std::uint32_t>(junk));
    riff.bytes().append(QByteArray(junk, '\0'));

    riff.fourcc("LIST");
    riff.u32(clamp32(position - avi::MoviTypeOffset));
    riff.fourcc("movi");
    return riff.bytes();
}

// Removes the temporary file and closes it, so that the writer can open another.
void KVRAviWriter::Private::discard()
{
    file.cancel();
}

bool KVRAviWriter::Private::fail(const QString& message)
{
    error = message;
    failed = true;
    CoreLog::print(LogTelemetry, CoreLog::Level::Warning, "%s", qUtf8Printable(message));
    return false;
}

bool KVRAviWriter::Private::write(const QByteArray& bytes)
{
    if (!file.write(bytes))
        return fail(QStringLiteral("cannot write %1: %2").arg(path, file.errorString()));
    return true;
}

bool KVRAviWriter::Private::addChunk(Stream stream, const char* id, const QByteArray& data,
                                     bool keyFrame)
{
    if (!isOpen) {
        error = QStringLiteral("the file is not open");
        return false;
    }
    if (failed)
        return false;
    if (!hasStream(stream)) {
        error = QStringLiteral("the layout has no stream for chunk %1").arg(QLatin1String(id, 4));
        return false;
    }
    const auto size = static_cast<std::uint64_t>(data.size());
    const std::uint64_t padded = size + (size % 2);
    // The index grows with every chunk and must fit as well.
    const std::uint64_t sizeAfter =
        position + 8 + padded + 8 + (index.size() + 1) * avi::IndexEntrySize;
    if (sizeAfter > MaxFileSize) {
        // Refused without harm: the file written so far can still be closed.
        error = QStringLiteral("chunk of %1 bytes would take the file past 4 GB").arg(size);
        return false;
    }

    RiffBuilder chunkHeader;
    chunkHeader.fourcc(id);
    chunkHeader.u32(static_cast<std::uint32_t>(size));
    if (!write(chunkHeader.bytes()) || !write(data) ||
        (size % 2 != 0 && !write(QByteArray(1, '\0'))))
        return false;

    IndexEntry entry{};
    std::copy_n(id, 4, entry.id.begin());
    entry.flags = keyFrame ? AviifKeyFrame : 0;
    entry.offset = static_cast<std::uint32_t>(position - avi::MoviTypeOffset);
    entry.size = static_cast<std::uint32_t>(size);
    index.push_back(entry);

    StreamStats& s = stats[stream];
    ++s.chunks;
    s.bytes += size;
    s.largest = std::max(s.largest, static_cast<std::uint32_t>(size));
    position += 8 + padded;
    return true;
}

KVRAviWriter::KVRAviWriter(Layout layout) : d(std::make_unique<Private>())
{
    d->layout = std::move(layout);
}

KVRAviWriter::~KVRAviWriter()
{
    // An unfinished file never replaces what was there before.
    if (d->isOpen)
        d->discard();
}

bool KVRAviWriter::open(const QString& path)
{
    if (d->isOpen) {
        d->error = QStringLiteral("a file is already open");
        return false;
    }
    d->error.clear();
    d->failed = false;
    d->stats = {};
    d->index.clear();
    d->path = path;
    if (!d->file.open(path)) {
        d->error = QStringLiteral("cannot create %1: %2").arg(path, d->file.errorString());
        return false;
    }
    d->isOpen = true;
    d->position = HeaderSize;
    return d->write(d->header());
}

bool KVRAviWriter::addVideoFrame(const QByteArray& data, bool keyFrame)
{
    return d->addChunk(VideoStream, "00dc", data, keyFrame);
}

bool KVRAviWriter::addAudioChunk(const QByteArray& data)
{
    return d->addChunk(AudioStream, "01wb", data, true);
}

bool KVRAviWriter::addTelemetryChunk(const QByteArray& data)
{
    return d->addChunk(TelemetryStream, avi::TelemetryChunkId, data, true);
}

bool KVRAviWriter::addTelemetryRecord(const _AVI_GPS_DATA_T& record)
{
    return addTelemetryChunk(QByteArray(reinterpret_cast<const char*>(&record), sizeof record));
}

bool KVRAviWriter::addTelemetryRecord(const _AVI_GSENSOR_DATA_T& record)
{
    return addTelemetryChunk(QByteArray(reinterpret_cast<const char*>(&record), sizeof record));
}

bool KVRAviWriter::close()
{
    if (!d->isOpen) {
        d->error = QStringLiteral("the file is not open");
        return false;
    }
    d->isOpen = false;
    if (d->failed) {
        d->discard();
        return false;
    }

    RiffBuilder idx1;
    idx1.beginChunk("idx1");
    for (const IndexEntry& entry : d->index) {
        idx1.bytes().append(entry.id.data(), 4);
        idx1.u32(entry.flags);
        idx1.u32(entry.offset);
        idx1.u32(entry.size);
    }
    idx1.end();

    if (!d->write(idx1.bytes()) || !d->file.seek(0) || !d->write(d->header())) {
        if (d->error.isEmpty())
            d->error = d->file.errorString();
        d->discard();
        return false;
    }
    if (!d->file.commit()) {
        d->error = QStringLiteral("cannot save %1: %2").arg(d->path, d->file.errorString());
        return false;
    }
    return true;
}

QString KVRAviWriter::errorString() const
{
    return d->error;
}

} // namespace kavro
