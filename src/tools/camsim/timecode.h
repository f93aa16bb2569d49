#pragma once

#include <QImage>
#include <QRect>
#include <QSize>

#include <optional>

class QPainter;

namespace kavro::camsim {

// A row of black and white blocks in a corner of every frame that carries the frame number, so
// that a test can tell from a player's pixels which frame it shows. The blocks are large enough
// to survive lossy compression at the smallest frame size the simulator accepts.
//
// Layout, left to right: a white and a black reference block, 16 bits of the frame number (most
// significant first, white = 1), an even-parity block and a closing white block.
class TimeCode
{
public:
    static constexpr int Cells = 20;
    static constexpr int DataBits = 16;
    static constexpr int MaximumFrame = (1 << DataBits) - 1;
    static constexpr QSize MinimumFrameSize{128, 72};

    static QRect stripRect(const QSize& frameSize);
    static void paint(QPainter& painter, const QSize& frameSize, int frame);
    // The frame number read back from a (decoded) frame, or nothing when the blocks are not
    // there or do not agree with their parity.
    static std::optional<int> read(const QImage& image);

private:
    static QRect cellRect(const QSize& frameSize, int cell);
};

} // namespace kavro::camsim
