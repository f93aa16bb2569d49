#include "kvrsettingforflashdataviewcontroller.h"

#include "card/alertsheet.h"
#include "card/filepanel.h"
#include "kvrflashdatatablemodel.h"
#include "kvrsettingcontroller.h"
#include "kvrsettingloadingsheet.h"
#include "map/kvrmapwindowcontroller.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QFutureWatcher>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLoggingCategory>
#include <QMouseEvent>
#include <QPushButton>
#include <QTableView>
#include <QTimer>
#include <QtConcurrent>

namespace kavro {

namespace {

Q_LOGGING_CATEGORY(lcFlashData, "kavro.settings.flashdata", QtInfoMsg)

struct ReadResult
{
    bool read = false;
    QString error;
    KVRFlashData data;
};

} // namespace

KVRSettingForFlashDataViewController::KVRSettingForFlashDataViewController(QWidget* parent)
    : KVRSettingControllerDelegate(parent)
{
    awakeFromNib();
}

// Closing the settings window closes the map window that belongs to it.
KVRSettingForFlashDataViewController::~KVRSettingForFlashDataViewController() = default;

void KVRSettingForFlashDataViewController::awakeFromNib()
{
    m_model = new KVRFlashDataTableModel(this);
    m_tableView = new QTableView(this);
    m_tableView->setObjectName(QStringLiteral("tableView"));
    m_tableView->setModel(m_model);
    m_tableView->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_tableView->setSelectionMode(QAbstractItemView::SingleSelection);
    m_tableView->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_tableView->setAlternatingRowColors(true);
    m_tableView->setWordWrap(false);
    m_tableView->verticalHeader()->hide();
    m_tableView->verticalHeader()->setDefaultSectionSize(
        QFontMetrics(KVRFlashDataTableModel::cellFont()).height() + 4);
    // The widths are in points, like the cells' font size, and never narrower than a cell's
    // digits: the coordinates would be cut short at their given widths.
    const double pixelsPerPoint = m_tableView->logicalDpiX() / 72.0;
    const QFontMetrics cellMetrics(KVRFlashDataTableModel::cellFont());
    for (int column = 0; column < FlashDataColumnCount; ++column) {
        const int digits = cellMetrics.horizontalAdvance(flashDataCellText(column, {}, 0));
        m_tableView->horizontalHeader()->resizeSection(
            column, std::max(qRound(flashDataColumns()[column].width * pixelsPerPoint),
                             digits + 3 * cellMetrics.averageCharWidth()));
    }
    // A double-click below the last row is told apart from one on a row; the view's own
    // doubleClicked signal knows rows only.
    m_tableView->viewport()->installEventFilter(this);

    //% "Open"
    m_openButton = new QPushButton(qtTrId("open"), this);
    m_openButton->setObjectName(QStringLiteral("openButton"));
    m_openButton->setAutoDefault(false);
    connect(m_openButton, &QPushButton::clicked, this,
            &KVRSettingForFlashDataViewController::openFileDialog);
    //% "Export"
    m_exportButton = new QPushButton(qtTrId("export"), this);
    m_exportButton->setObjectName(QStringLiteral("exportButton"));
    m_exportButton->setAutoDefault(false);
    connect(m_exportButton, &QPushButton::clicked, this,
            &KVRSettingForFlashDataViewController::onSaveCSVFile);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(m_openButton);
    buttons->addWidget(m_exportButton);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_tableView, 1);
    layout->addLayout(buttons);
}

qint64 KVRSettingForFlashDataViewController::flashDataNum() const
{
    return m_model->flashData().count();
}

QWidget* KVRSettingForFlashDataViewController::settingWindow() const
{
    if (KVRSettingController* controller = mainController())
        return controller;
    return window();
}

void KVRSettingForFlashDataViewController::displayFileData()
{
    if (!m_firstLoad)
        return;
    m_firstLoad = false;
    if (!m_FlashDataFilePath.isEmpty() && QFileInfo::exists(m_FlashDataFilePath)) {
        loadFlashDataFile();
        return;
    }
    //% "The card holds no drive records (DrvInfo/kavro_000.drv). Open a .drv file instead."
    showAlert(settingWindow(), QStringLiteral("KAVRO"), qtTrId("setting.flashdata.warning"));
}

void KVRSettingForFlashDataViewController::onHide()
{
    m_mapWindowController.reset();
}

void KVRSettingForFlashDataViewController::openFileDialog()
{
    m_mapWindowController.reset();
    if (m_busy)
        return;
    // Another file is most likely beside the last one.
    const QString folder =
        m_FlashDataFilePath.isEmpty() ? QString() : QFileInfo(m_FlashDataFilePath).absolutePath();
    //% "Open Drive Records"
    QFileDialog* panel = openFilePanel(settingWindow(), QFileDialog::AcceptOpen,
                                       qtTrId("setting.flashdata.open_title"),
                                       QStringLiteral("drv"), QString(), folder);
    connect(panel, &QFileDialog::filesSelected, this, [this](const QStringList& files) {
        if (files.isEmpty())
            return;
        m_FlashDataFilePath = files.constLast();
        loadFlashDataFile();
    });
}

void KVRSettingForFlashDataViewController::loadFlashDataFile()
{
    if (m_FlashDataFilePath.isEmpty() || m_busy)
        return;
    m_busy = true;
    if (KVRSettingController* controller = mainController())
        controller->loadingSheet()->showLoading(QStringLiteral("Loading..."));
    // The records are read into a block of their own; the table's block is replaced only once
    // the read is done.
    auto* watcher = new QFutureWatcher<ReadResult>(this);
    connect(watcher, &QFutureWatcher<ReadResult>::finished, this, [this, watcher] {
        watcher->deleteLater();
        ReadResult result = watcher->result();
        if (!result.read)
            qCWarning(lcFlashData).noquote()
                << "cannot read" << m_FlashDataFilePath << result.error;
        finishLoading(result.read, result.data);
    });
    watcher->setFuture(QtConcurrent::run([path = m_FlashDataFilePath] {
        ReadResult result;
        result.read = result.data.doReadFlashDataFile(path, &result.error);
        return result;
    }));
}

void KVRSettingForFlashDataViewController::finishLoading(bool read, const KVRFlashData& data)
{
    if (read)
        m_model->setFlashData(data);
    m_busy = false;
    if (read) {
        if (KVRSettingController* controller = mainController())
            controller->loadingSheet()->hideLoading();
        return;
    }
    // The table keeps what it showed; the message follows the sheet rather than stacking on it.
    //% "The drive records could not be read from %1."
    const QString message =
        qtTrId("msg.flashdata_read_fail").arg(QDir::toNativeSeparators(m_FlashDataFilePath));
    const auto tell = [this, message] {
        showAlert(settingWindow(), QStringLiteral("KAVRO"), message);
    };
    KVRSettingController* controller = mainController();
    if (!controller || !controller->loadingSheet()->isVisible()) {
        tell();
        return;
    }
    connect(controller->loadingSheet(), &QDialog::finished, this, tell, Qt::SingleShotConnection);
    controller->loadingSheet()->hideLoading();
}

bool KVRSettingForFlashDataViewController::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_tableView->viewport() && event->type() == QEvent::MouseButtonDblClick) {
        auto* click = static_cast<QMouseEvent*>(event);
        if (click->button() == Qt::LeftButton)
            doubleClickTableRow(m_tableView->rowAt(click->position().toPoint().y()));
    }
    return KVRSettingControllerDelegate::eventFilter(watched, event);
}

void KVRSettingForFlashDataViewController::doubleClickTableRow(int row)
{
    // The model logs the row and refuses one outside the table.
    std::optional<FlashDataPosition> position = m_model->flashData().positionForRow(row);
    if (!position)
        return;
    if (!m_mapWindowController) {
        m_mapWindowController = std::make_unique<KVRMapWindowController>();
        m_mapWindowController->showWindow();
        m_mapWindowController->moveWindowRightBy(settingWindow()->frameGeometry());
    } else {
        m_mapWindowController->showWindow();
    }
    // A zero coordinate is a record logged before the camera had a position.
    if (position->movesMap())
        m_mapWindowController->updateMapLat(position->latitude, position->longitude);
}

void KVRSettingForFlashDataViewController::onSaveCSVFile()
{
    m_mapWindowController.reset();
    if (flashDataNum() == 0 || m_busy)
        return;
    //% "Export Drive Records"
    QFileDialog* panel = openFilePanel(settingWindow(), QFileDialog::AcceptSave,
                                       qtTrId("setting.flashdata.export_title"),
                                       QStringLiteral("csv"), QStringLiteral("kavro_000"));
    connect(panel, &QFileDialog::fileSelected, this,
            &KVRSettingForFlashDataViewController::doWriteCSVFile);
}

void KVRSettingForFlashDataViewController::doWriteCSVFile(const QString& path)
{
    if (m_busy)
        return;
    m_busy = true;
    if (KVRSettingController* controller = mainController())
        controller->loadingSheet()->showLoading(QStringLiteral("Saving..."));
    auto* watcher = new QFutureWatcher<QString>(this);
    connect(watcher, &QFutureWatcher<QString>::finished, this, [this, watcher, path] {
        watcher->deleteLater();
        const QString error = watcher->result();
        if (KVRSettingController* controller = mainController())
            controller->loadingSheet()->hideLoading();
        m_busy = false;
        QTimer::singleShot(SavedAlertDelayMs, this, [this, path, error] {
            if (error.isEmpty()) {
                showAlert(settingWindow(), QStringLiteral("KAVRO"), qtTrId("msg.saved"));
                return;
            }
            // The old file, if any, is left whole by the write path.
            qCWarning(lcFlashData).noquote() << "cannot write" << path << error;
            //% "The file could not be written: %1"
            showAlert(settingWindow(), QStringLiteral("KAVRO"),
                      qtTrId("msg.flashdata_write_fail").arg(error));
        });
    });
    watcher->setFuture(QtConcurrent::run(
        [data = m_model->flashData(), titles = KVRFlashDataTableModel::columnNames(), path] {
            QString error;
            if (!data.doWriteCSVFile(path, titles, &error) && error.isEmpty())
                error = QStringLiteral("unknown error");
            return error;
        }));
}

} // namespace kavro
