#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

namespace {

struct Outcome {
    int code = -1;
    QString out, err;
};

// The program itself, as a script or a clerk at a terminal starts it, in `dir`. No display:
// a screen started by mistake would stop with its own message and status 1.
Outcome velmora(const QStringList& args, const QString& dir)
{
    QProcess p;
    p.setWorkingDirectory(dir);
    QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
    for (const char* v : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) env.remove(QString::fromLatin1(v));
    p.setProcessEnvironment(env);
    p.start(QCoreApplication::applicationDirPath() + QStringLiteral("/velmora"), args);
    p.closeWriteChannel();
    if (!p.waitForFinished(60000)) return {};
    return {p.exitCode(), QString::fromLocal8Bit(p.readAllStandardOutput()), QString::fromLocal8Bit(p.readAllStandardError())};
}

} // namespace

TEST(CommandLine, RefusesWhatItDoesNotKnowAndMakesNothing)
{
    struct Case { QStringList args; const char* says; } cases[] = {
        {{"frobnicate"}, "frobnicate というコマンドはありません。"},
        {{"-platform", "offscreen"}, "使い方:"},
        {{"new", ""}, "作成するフォルダの名前を指定してください。"},
        {{"new", " "}, "作成するフォルダの名前を指定してください。"},
        {{"new"}, "使い方:"},
        {{"new", "co", "--year", "1899"}, "--year には 1900 から 2999 の年度を指定してください。"},
        {{"new", "co", "--year", "3000"}, "--year には 1900 から 2999 の年度を指定してください。"},
        {{"new", "co", "--year", "２０２６"}, "--year には 1900 から 2999 の年度を指定してください。"},
        {{"new", "co", "--start-month", "13"}, "--start-month には 1 から 12 の月を指定してください。"},
        {{"new", "co", "--year"}, "使い方:"},
        {{"new", "co", "--colour", "red"}, "使い方:"},
        {{"new", "co", "--year", "2026", "--year", "2027"}, "使い方:"},
        {{"new", "co", "--company", " "}, "--company には会社名を指定してください。"},
        {{"demo", ""}, "作成するフォルダの名前を指定してください。"},
        {{"demo", "co", "--slips", "-1"}, "使い方:"},
        {{"batch", "--office"}, "使い方:"},
    };
    for (const Case& c : cases) {
        QTemporaryDir dir;
        const Outcome r = velmora(c.args, dir.path());
        EXPECT_EQ(r.code, 2) << qPrintable(c.args.join(' ')) << qPrintable(r.err);
        EXPECT_TRUE(r.err.contains(QString::fromUtf8(c.says))) << qPrintable(c.args.join(' ')) << qPrintable(r.err);
        EXPECT_TRUE(QDir(dir.path()).isEmpty()) << qPrintable(c.args.join(' '));
    }
}

TEST(CommandLine, MakesTheCompanyWhereItWasAskedFor)
{
    QTemporaryDir dir;
    const Outcome made = velmora({"new", "co", "--year", "2999", "--start-month", "1"}, dir.path());
    EXPECT_EQ(made.code, 0) << qPrintable(made.err);
    EXPECT_TRUE(QFileInfo::exists(dir.filePath("co/MASTER.db")) || QFileInfo::exists(dir.filePath("co/MASTER/MASTER.db")));
    EXPECT_TRUE(QFileInfo::exists(dir.filePath("co/2999/SLIP.db")));
    EXPECT_EQ(QDir(dir.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList{"co"});

    const Outcome help = velmora({"--help"}, dir.path());
    EXPECT_EQ(help.code, 0);
    for (const char* word : {"velmora new", "velmora demo", "velmora batch", "velmora rebuild"})
        EXPECT_TRUE(help.out.contains(QString::fromLatin1(word))) << word;
}
