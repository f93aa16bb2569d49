#pragma once

#include <QColor>
#include <QWidget>

namespace kavro {

// A view filled with one colour, optionally with a border drawn inside its bounds. The clear
// colour leaves the parent visible.
class TKColorBackgroundView : public QWidget
{
    Q_OBJECT

public:
    explicit TKColorBackgroundView(QWidget* parent = nullptr);

    QColor backgroundColor() const { return m_backgroundColor; }
    void setBackgroundColor(const QColor& color);
    QColor borderColor() const { return m_borderColor; }
    // A border width of 0 draws no border.
    qreal borderWidth() const { return m_borderWidth; }
    void setBorder(const QColor& color, qreal width);

protected:
    void paintEvent(QPaintEvent* event) override;

    qreal m_cornerRadius = 0;

private:
    QColor m_backgroundColor = Qt::transparent;
    QColor m_borderColor = Qt::transparent;
    qreal m_borderWidth = 0;
};

} // namespace kavro
