// A settings save whose card is pulled out of the reader at the worst moment: the new content is
// on the card beside the old file, and only the rename is left.

#include "fusecard.h"
#include "resources/translations/infoplisttranslator.h"
#include "settingwindowfixture.h"

#include <dlfcn.h>
#include <functional>

using namespace kavro;
using namespace kavro::test;

namespace {

// Runs once, just before the next rename onto a config.bin.
std::function<void()> g_beforeRename;

} // namespace

// Stands in for the C library's rename in this program: the product calls it the usual way.
extern "C" int rename(const char* from, const char* to)
{
    if (g_beforeRename && QByteArray(to).endsWith("/config.bin"))
        std::exchange(g_beforeRename, {})();
    using Rename = int (*)(const char*, const char*);
    static const auto real = reinterpret_cast<Rename>(::dlsym(RTLD_NEXT, "rename"));
    return real(from, to);
}

class TestSettingSaveFaults : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        isolatedConfigHome();
        installInfoPlistTranslator(QStringLiteral("en"));
    }

    void cardPulledBeforeTheRenameKeepsTheOldFile()
    {
        QTemporaryDir dir;
        const QString stage = dir.filePath("stage"), mount = dir.filePath("mnt");
        const QString image = dir.filePath("card.img");
        _FILEDATA record = defaultRecord();
        prepareFileDataForSave(record);
        const QByteArray before = fileDataBytes(record);
        QVERIFY(QDir().mkpath(stage) && writeFile(stage + "/config.bin", before));
        FuseCard card;
        QString error;
        QVERIFY2(card.insert(image, stage, 2, mount, &error), qPrintable(error));

        auto window = openWindow({nullptr, mount, true});
        QVERIFY(window);
        clickSegment(window->targetController(), "vid_brightness", 0);
        g_beforeRename = [&card] { card.pull(); };
        key(window.get(), Qt::Key_S, Qt::ControlModifier);
        QVERIFY(!g_beforeRename); // it ran
        QTRY_VERIFY_WITH_TIMEOUT(visibleAlert(window.get()), WaitMs);
        QCOMPARE(visibleAlert(window.get())->text(), QString("Warn"));
        QCOMPARE(visibleAlert(window.get())->informativeText(), qtTrId("msg.write_protected_disk"));
        dismissAlert(window.get());
        QVERIFY(window->isVisible());
        // Nothing landed on the computer's own disk where the card was.
        QVERIFY(QDir(mount).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));

        QVERIFY2(card.mount(image, mount, &error), qPrintable(error));
        QCOMPARE(readFile(mount + "/config.bin"), before);
        // The copy written before the pull can't be taken off a card that is gone: it stays, hidden
        // under a name the camera does not read.
        QStringList left = QDir(mount).entryList(QDir::Files | QDir::Hidden);
        left.removeOne("KAVRO"); // the volume label, which fusefat lists as a file
        QCOMPARE(left.size(), 2);
        QCOMPARE(left.last().toLower(), "config.bin");
        QVERIFY2(left.first().startsWith(".config.bin."), qPrintable(left.first()));
    }
};

QTEST_MAIN(TestSettingSaveFaults)
#include "tst_settingsavefaults.moc"
