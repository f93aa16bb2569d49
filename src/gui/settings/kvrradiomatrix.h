#pragma once

#include "settings/settingvalues.h"

#include <QStringList>
#include <QWidget>

#include <optional>

class QButtonGroup;
class QGridLayout;
class QRadioButton;

namespace kavro {

// Radio buttons in rows and columns, cells numbered row by row; one cell at most is selected.
class KVRRadioMatrix : public QWidget
{
    Q_OBJECT

public:
    KVRRadioMatrix(int rows, int columns, QWidget* parent = nullptr);

    int numberOfRows() const { return m_rows; }
    int numberOfColumns() const { return m_columns; }

    // The label filler: cell i in cell order gets title i, for as many titles as are given.
    void setCellTitles(const QStringList& titles);

    std::optional<MatrixCell> selectedCell() const;
    // A cell outside the matrix selects none.
    void selectCell(MatrixCell cell);
    void deselectAllCells();

    QRadioButton* cellAt(MatrixCell cell) const;

signals:
    void cellClicked(kavro::MatrixCell cell);

private:
    int m_rows;
    int m_columns;
    QButtonGroup* m_group;
};

} // namespace kavro
