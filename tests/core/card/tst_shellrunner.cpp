#include "card/shellscript.h"
#include "testsupport.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

using namespace kavro;

class TestShellRunner : public QObject
{
    Q_OBJECT

private slots:
    void results_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("message");
        QTest::newRow("success with output") << "echo hello; echo oops >&2" << 0 << "";
        QTest::newRow("exit 1") << "echo write protected >&2; exit 1" << 1 << "write protected";
        QTest::newRow("exit 3, silent") << "exit 3" << 3 << "status 3";
        QTest::newRow("missing command") << "kavro-no-such-command" << 127 << "not found";
        QTest::newRow("killed") << "kill -9 $$" << int(ShellScriptResult::Crashed) << "";
        QTest::newRow("stdin closed") << "read line" << 1 << "";
        QTest::newRow("output bounded")
            << "yes 0123456789 | head -c 20000000; echo; echo the reason; exit 4" << 4
            << "the reason";
    }

    void results()
    {
        QFETCH(QString, command);
        QFETCH(int, code);
        QFETCH(QString, message);
        ShellScriptOptions options;
        options.outputLimit = 4096;
        ShellScriptResult result = runShellScript(command, false, options);
        QCOMPARE(result.code, code);
        QCOMPARE(result.ok(), code == 0);
        QVERIFY2(code == 0 ? result.message.isEmpty() : result.message.contains(message),
                 qPrintable(result.message));
        QVERIFY(result.message.size() <= options.outputLimit + 3);
        if (command.startsWith("yes"))
            QVERIFY(result.message.endsWith(message));
    }

    void cannotStart()
    {
        ShellScriptOptions options;
        options.shell = QStringLiteral("/nonexistent/kavro/sh");
        ShellScriptResult result = runShellScript("true", false, options);
        QCOMPARE(result.code, ShellScriptResult::CannotStart);
        QVERIFY(!result.message.isEmpty());
    }

    void administratorRights_data()
    {
        QTest::addColumn<QByteArray>("elevator"); // body of a stand-in for the real one
        QTest::addColumn<bool>("root");
        QTest::addColumn<QString>("command");
        QTest::addColumn<int>("code");

        QByteArray grant = "echo \"$@\" > \"$0.ran\"\nexec \"$@\"\n";
        QByteArray dismiss =
            "echo 'Error executing command as another user: Request dismissed' >&2\nexit 126\n";
        QByteArray refuse =
            "echo 'Error executing command as another user: Not authorized' >&2\nexit 127\n";
        QTest::newRow("granted") << grant << false << "exit 0" << 0;
        QTest::newRow("granted, not found") << grant << false << "kavro-no-such-command" << 127;
        QTest::newRow("dismissed")
            << dismiss << false << "exit 0" << int(ShellScriptResult::AuthorisationDismissed);
        QTest::newRow("refused") << refuse << false << "exit 0"
                                 << int(ShellScriptResult::NotAuthorised);
        QTest::newRow("root runs directly") << refuse << true << "exit 0" << 0;
    }

    void administratorRights()
    {
        QFETCH(QByteArray, elevator);
        QFETCH(bool, root);
        QFETCH(QString, command);
        QFETCH(int, code);

        QTemporaryDir dir;
        ShellScriptOptions options;
        options.elevator = dir.filePath("elevator");
        options.alreadyPrivileged = root;
        QVERIFY(test::writeFile(options.elevator, "#!/bin/sh\n" + elevator));
        QVERIFY(QFile::setPermissions(options.elevator, QFile::ReadOwner | QFile::ExeOwner));

        ShellScriptResult result = runShellScript(command, true, options);
        QCOMPARE(result.code, code);
        if (code < 0)
            QVERIFY(result.message.contains("administrator rights", Qt::CaseInsensitive));
        QByteArray ran = test::readFile(options.elevator + ".ran").trimmed();
        QCOMPARE(ran, !root && code >= 0 ? "/bin/sh -c " + command.toUtf8() : QByteArray());
    }
};

QTEST_GUILESS_MAIN(TestShellRunner)
#include "tst_shellrunner.moc"
