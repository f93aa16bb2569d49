#include "recording/kvrmedia.h"

#include <QDir>
#include <QTest>

using namespace kavro;

class TestKVRMedia : public QObject
{
    Q_OBJECT

private slots:
    void parseName_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("division");
        QTest::addColumn<int>("direction");
        QTest::addColumn<QString>("stamp");
        const char* noTime = "00000000000000";
        const struct
        {
            const char *tag, *name;
            int division, direction;
            const char* stamp;
        } rows[] = {
            {"always front", "alwa_20240131_235959_F.avi", 0, 0, "20240131235959"},
            {"motion rear", "motion_20240131_120000_R.AVI", 1, 1, "20240131120000"},
            {"month 13", "event_20241399_120000_F.avi", 2, 2, noTime},
            {"minute 61", "alwa_20240131_246161_F.avi", 0, 2, noTime},
            {"upper bounds", "alwa_27000131_240060_R.avi", 0, 1, "27000131240060"},
            {"separator unchecked", "alwa_20240131-235959_F.avi", 0, 0, "20240131235959"},
            // Each field is read as the C library reads a leading integer.
            {"sign and blank", "alwa_2024+1 1_120000_F.avi", 0, 0, "20240101120000"},
            {"negative month", "alwa_2024-101_120000_F.avi", 0, 2, noTime},
            {"digit then letter", "alwa_20240103_12000x_R.avi", 0, 1, "20240103120000"},
            {"non-ASCII digits", "alwa_2024\u0661\u066201_120000_F.avi", 0, 2, noTime},
            {"unknown prefix", "xxxx_20240131_235959_F.avi", 0, 0, noTime},
            {"24 characters as always", "alwa_20240131_235959xx_R.avi", 0, 1, "20240131235959"},
            {"suffix case", "alwa_20240131_235959_f.avi", 0, 2, "20240131235959"},
            {"20 characters", "alwa_20240131_235959.avi", 0, 0, noTime},
        };
        for (const auto& r : rows)
            QTest::newRow(r.tag) << QString::fromUtf8(r.name) << r.division << r.direction
                                 << QString(r.stamp);
    }

    void parseName()
    {
        QFETCH(QString, name);
        QFETCH(int, division);
        QFETCH(int, direction);
        QFETCH(QString, stamp);
        KVRMedia media(QStringLiteral("/card/DCIM/") + name);
        QCOMPARE(media.mediaDivision(), division);
        QCOMPARE(media.mediaDirection(), direction);
        QCOMPARE(media.yyyymmddhhmiss(), stamp);
        QCOMPARE(media.hasTime(), media.year() != 0);
    }

    void pathParts_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("dir");
        QTest::addColumn<QString>("extension");
        QTest::addColumn<QString>("fileName");
        QTest::addColumn<QString>("group");
        const struct
        {
            const char *tag, *path, *dir, *extension, *fileName, *group;
        } rows[] = {
            {"extension as written", "/card/DCIM/alwa_20240131_235959_F.AVI", "/card/DCIM", "AVI",
             "alwa_20240131_235959_F.AVI", "alwa_20240131_235959"},
            {"no extension", "/event_20240131_120000_F", "/", "", "event_20240131_120000_F.",
             "event_20240131_120000"},
            {"last dot only", "/a.b/clip.tar.avi", "/a.b", "avi", "clip.tar.avi", "clip.t"},
            {"trailing slash", "/x/motion_20240131_235959_R.avi/", "/x", "avi",
             "motion_20240131_235959_R.avi", "motion_20240131_235959"},
            {"relative", "event_20240131_235959_R.avi", nullptr, "avi",
             "event_20240131_235959_R.avi", "event_20240131_235959"},
        };
        for (const auto& r : rows)
            QTest::newRow(r.tag) << r.path << (r.dir ? r.dir : QDir::currentPath()) << r.extension
                                 << r.fileName << r.group;
    }

    void pathParts()
    {
        QFETCH(QString, path);
        QFETCH(QString, dir);
        QFETCH(QString, extension);
        QFETCH(QString, fileName);
        QFETCH(QString, group);
        KVRMedia media(path);
        QCOMPARE(media.path(), QDir::cleanPath(QDir::current().absoluteFilePath(path)));
        QCOMPARE(
            QStringList({media.dir(), media.extension(), media.fileName(), media.mediaGroupName()}),
            QStringList({dir, extension, fileName, group}));
    }

    void mediaDirectionForPath()
    {
        QCOMPARE(kavro::mediaDirectionForPath("/card/alwa_20240131_120000_r.AVI"),
                 KVRMediaDirectionRear);
        QCOMPARE(kavro::mediaDirectionForPath("_f.Avi"), KVRMediaDirectionFront); // just six
        QCOMPARE(kavro::mediaDirectionForPath("/card/_F.avi.bak"), KVRMediaDirectionUnknown);
        QCOMPARE(kavro::mediaDirectionForPath(""), KVRMediaDirectionUnknown);
    }
};

QTEST_GUILESS_MAIN(TestKVRMedia)
#include "tst_kvrmedia.moc"
