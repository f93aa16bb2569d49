#include "kvrradiomatrix.h"

#include <QButtonGroup>
#include <QGridLayout>
#include <QRadioButton>

namespace kavro {

KVRRadioMatrix::KVRRadioMatrix(int rows, int columns, QWidget* parent)
    : QWidget(parent), m_rows(rows), m_columns(columns), m_group(new QButtonGroup(this))
{
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(QMargins());
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            auto* cell = new QRadioButton(this);
            cell->setObjectName(QStringLiteral("cell%1_%2").arg(row).arg(column));
            m_group->addButton(cell, row * columns + column);
            grid->addWidget(cell, row, column);
        }
    }
    connect(m_group, &QButtonGroup::idClicked, this, [this](int id) {
        emit cellClicked({id / m_columns, id % m_columns});
    });
}

void KVRRadioMatrix::setCellTitles(const QStringList& titles)
{
    for (int i = 0; i < titles.size() && i < m_rows * m_columns; ++i)
        m_group->button(i)->setText(titles.at(i));
}

std::optional<MatrixCell> KVRRadioMatrix::selectedCell() const
{
    int id = m_group->checkedId();
    if (id < 0)
        return std::nullopt;
    return MatrixCell{id / m_columns, id % m_columns};
}

void KVRRadioMatrix::selectCell(MatrixCell cell)
{
    if (QRadioButton* button = cellAt(cell))
        button->setChecked(true);
    else
        deselectAllCells();
}

void KVRRadioMatrix::deselectAllCells()
{
    // An exclusive group keeps one button checked unless told otherwise for a moment.
    m_group->setExclusive(false);
    for (QAbstractButton* button : m_group->buttons())
        button->setChecked(false);
    m_group->setExclusive(true);
}

QRadioButton* KVRRadioMatrix::cellAt(MatrixCell cell) const
{
    if (cell.row < 0 || cell.row >= m_rows || cell.column < 0 || cell.column >= m_columns)
        return nullptr;
    return static_cast<QRadioButton*>(m_group->button(cell.row * m_columns + cell.column));
}

} // namespace kavro
