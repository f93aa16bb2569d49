#include "timecode.h"

#include <QPainter>

#include <algorithm>
#include <array>
#include <bit>

namespace kavro::camsim {

namespace {

constexpr int MinimumContrast = 60;

bool parityOf(int value)
{
    return (std::popcount(static_cast<unsigned>(value)) & 1) != 0;
}

// Whether each block is white, from the left.
std::array<bool, TimeCode::Cells> pattern(int frame)
{
    std::array<bool, TimeCode::Cells> cells{};
    cells[0] = true;
    cells[1] = false;
    for (int bit = 0; bit < TimeCode::DataBits; ++bit)
        cells[static_cast<std::size_t>(2 + bit)] =
            ((frame >> (TimeCode::DataBits - 1 - bit)) & 1) != 0;
    cells[TimeCode::Cells - 2] = parityOf(frame);
    cells[TimeCode::Cells - 1] = true;
    return cells;
}

int evenAtLeast(int value, int minimum)
{
    return std::max(minimum, value & ~1);
}

} // namespace

QRect TimeCode::cellRect(const QSize& frameSize, int cell)
{
    const int width = evenAtLeast(frameSize.width() / 80, 6);
    const int height = evenAtLeast(frameSize.height() / 40, 6);
    const int left = evenAtLeast(width / 2, 2);
    const int top = frameSize.height() - height - evenAtLeast(height / 2, 2);
    return QRect(left + cell * width, top, width, height);
}

QRect TimeCode::stripRect(const QSize& frameSize)
{
    return cellRect(frameSize, 0).united(cellRect(frameSize, Cells - 1));
}

void TimeCode::paint(QPainter& painter, const QSize& frameSize, int frame)
{
    const auto cells = pattern(std::clamp(frame, 0, MaximumFrame));
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    for (int cell = 0; cell < Cells; ++cell)
        painter.fillRect(cellRect(frameSize, cell),
                         cells[static_cast<std::size_t>(cell)] ? Qt::white : Qt::black);
    painter.restore();
}

std::optional<int> TimeCode::read(const QImage& image)
{
    if (image.isNull() || image.width() < MinimumFrameSize.width() ||
        image.height() < MinimumFrameSize.height())
        return std::nullopt;
    const QImage rgb = image.convertToFormat(QImage::Format_RGB32);
    // Mean brightness of the middle half of a block, away from the ringing at its edges.
    auto brightness = [&](int cell) {
        const QRect r = cellRect(rgb.size(), cell);
        const QRect middle(r.left() + r.width() / 4, r.top() + r.height() / 4,
                           std::max(1, r.width() / 2), std::max(1, r.height() / 2));
        long long sum = 0;
        for (int y = middle.top(); y <= middle.bottom(); ++y) {
            const auto* line = reinterpret_cast<const QRgb*>(rgb.constScanLine(y));
            for (int x = middle.left(); x <= middle.right(); ++x)
                sum += qGray(line[x]);
        }
        return static_cast<int>(sum / (static_cast<long long>(middle.width()) * middle.height()));
    };
    const int white = std::min(brightness(0), brightness(Cells - 1));
    const int black = brightness(1);
    if (white - black < MinimumContrast)
        return std::nullopt;
    const int threshold = (white + black) / 2;
    int frame = 0;
    for (int bit = 0; bit < DataBits; ++bit)
        frame = (frame << 1) | (brightness(2 + bit) > threshold ? 1 : 0);
    if ((brightness(Cells - 2) > threshold) != parityOf(frame))
        return std::nullopt;
    return frame;
}

} // namespace kavro::camsim
