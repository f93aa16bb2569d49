#pragma once

#include "kvrsettingcontrollerdelegate.h"

#include <QString>

#include <memory>

class QPushButton;
class QTableView;

namespace kavro {

class KVRFlashData;
class KVRFlashDataTableModel;
class KVRMapWindowController;

// The drive-records page of the settings window: the camera's drive log in a table, a record's
// position in a map window beside the settings window, another .drv file opened, and the records
// exported as CSV. The page changes nothing in the settings record; it is made once per window and
// reads the card's file on its first display only.
class KVRSettingForFlashDataViewController : public KVRSettingControllerDelegate
{
    Q_OBJECT

public:
    static constexpr int SavedAlertDelayMs = 500;

    explicit KVRSettingForFlashDataViewController(QWidget* parent = nullptr);
    ~KVRSettingForFlashDataViewController() override;

    void setFlashDataFilePath(const QString& path) { m_FlashDataFilePath = path; }
    const QString& flashDataFilePath() const { return m_FlashDataFilePath; }
    qint64 flashDataNum() const;

    QTableView* tableView() const { return m_tableView; }
    KVRFlashDataTableModel* tableModel() const { return m_model; }
    KVRMapWindowController* mapWindowController() const { return m_mapWindowController.get(); }
    // True while a read or an export runs in the background.
    bool isBusy() const { return m_busy; }

    void onHide() override;
    void openFileDialog();
    void loadFlashDataFile();
    void onSaveCSVFile();
    void doubleClickTableRow(int row);

protected:
    void displayFileData() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void awakeFromNib();
    void finishLoading(bool read, const KVRFlashData& data);
    void doWriteCSVFile(const QString& path);
    QWidget* settingWindow() const;

    KVRFlashDataTableModel* m_model = nullptr;
    QTableView* m_tableView = nullptr;
    QPushButton* m_openButton = nullptr;
    QPushButton* m_exportButton = nullptr;
    QString m_FlashDataFilePath;
    bool m_firstLoad = true;
    bool m_busy = false;
    std::unique_ptr<KVRMapWindowController> m_mapWindowController;
};

} // namespace kavro
