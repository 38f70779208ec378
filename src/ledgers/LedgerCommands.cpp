#include "ledgers/LedgerCommands.h"
#include <cstdio>
#include <iostream>
#include <string>
#include <QMap>
#include "ledgers/LedgerBatch.h"
#include "ledgers/Recovery.h"
#include "shell/Dialogs.h"
#include "shell/InstanceLock.h"
#include "shell/MenuModel.h"
#include "shell/Session.h"
#include "shell/Startup.h"
#include "store/Sql.h"
#include "store/Store.h"

namespace {

const QString kPasswordPrompt = QStringLiteral("パスワードを入力してください。");

// The common dialogs without a screen. Start-up asks one thing, the password; it comes from
// the environment or the input. Nobody is there to answer a question, so any other one is
// answered "no": a script must never agree to something it was not written for.
class HeadlessDialogs : public Dialogs {
public:
    explicit HeadlessDialogs(const CommandConsole& c) : console_(c) { prev_ = setDialogs(this); }
    ~HeadlessDialogs() override { setDialogs(prev_); }
    HeadlessDialogs(const HeadlessDialogs&) = delete;
    HeadlessDialogs& operator=(const HeadlessDialogs&) = delete;

    bool Ask(const QString& m, const QString&, const QString& no) override
    {
        console_.err(m + QStringLiteral(" → ") + no);
        return false;
    }
    void Tell(const QString& m) override { console_.err(m); }
    QString Request(const QString& m, const QString& d) override
    {
        if (m != kPasswordPrompt) return d;
        // Without a password Enter passes: nothing is read, so a script never waits on input.
        if (session().Password.isEmpty()) return {};
        if (qEnvironmentVariableIsSet("VELMORA_PASSWORD")) return qEnvironmentVariable("VELMORA_PASSWORD");
        QString line;
        if (console_.readLine) console_.readLine(&line);
        return line;
    }
    // Said once, so a script's log shows why the command took its time.
    void ShowWait(const QString& m) override { console_.err(m); }
    void HideWait() override {}
    void MessageBox(const QString& t, const QString& m) override { console_.err(t + QStringLiteral(": ") + m); }

private:
    CommandConsole console_;
    Dialogs* prev_ = nullptr;
};

constexpr int kFailed = 1;
constexpr int kBadArguments = 2;

int usage(const CommandConsole& c)
{
    c.err(QStringLiteral("使い方:\n") + ledgerCommandsUsage());
    return kBadArguments;
}

// "--name value" pairs after the command; false on a stray word, a missing value or a name
// that is not allowed.
bool readOptions(const QStringList& args, const QStringList& allowed, QMap<QString, QString>* opts)
{
    for (qsizetype i = 1; i < args.size(); i += 2) {
        if (!args[i].startsWith(QLatin1String("--")) || i + 1 >= args.size()) return false;
        const QString name = args[i].mid(2);
        if (!allowed.contains(name) || opts->contains(name)) return false;
        opts->insert(name, args[i + 1]);
    }
    return true;
}

bool officeOption(const QMap<QString, QString>& o, const CommandConsole& c, short* office)
{
    *office = 0;
    if (!o.contains(QStringLiteral("office"))) return true;
    bool ok = false;
    const short v = o.value(QStringLiteral("office")).trimmed().toShort(&ok);
    if (!ok || v <= 0) {
        c.err(QStringLiteral("--office には営業所コード（数字）を指定してください。"));
        return false;
    }
    *office = v;
    return true;
}

bool monthOption(const QMap<QString, QString>& o, const QString& name, int* month)
{
    bool ok = false;
    *month = o.value(name).trimmed().toInt(&ok);
    return ok && isRebuildMonth(*month);
}

// The office chosen on the command line becomes the session's office, as the office change
// of the menu would make it.
int selectOffice(short office, const CommandConsole& c)
{
    Session& s = session();
    Query q(s.MasterDb, QStringLiteral("SELECT Code, Namae FROM Eig WHERE Code=?"), {office});
    if (!q.ok()) {
        c.err(QStringLiteral("エラー：") + QString::number(sqliteCode(q.error())) + QLatin1Char(' ')
              + q.error().databaseText());
        return kFailed;
    }
    if (!q.next()) {
        c.err(QStringLiteral("営業所 %1 は登録されていません。").arg(office));
        return kBadArguments;
    }
    s.EigCode = office;
    s.EigNamae = q.value(1).toString();
    return 0;
}

int runBatch(const QStringList& args, const CommandConsole& c)
{
    QMap<QString, QString> o;
    short office = 0;
    if (!readOptions(args, {QStringLiteral("office")}, &o)) return usage(c);
    if (!officeOption(o, c, &office)) return kBadArguments;
    if (const int r = startHeadless(office, c)) return r;
    QString error;
    QList<UnreachedLine> unreached;
    const bool ok = runLedgerProcessing(c.out, &error, &unreached);
    if (!ok) c.err(error);
    // The rest is posted, so the status stays 0; the lines left out are on standard error.
    if (ok && !unreached.isEmpty()) c.err(unreachedReport(unreached));
    endHeadless();
    return ok ? 0 : kFailed;
}

int runRebuild(const QStringList& args, const CommandConsole& c)
{
    QMap<QString, QString> o;
    short office = 0;
    if (!readOptions(args, {QStringLiteral("from"), QStringLiteral("to"), QStringLiteral("kind"), QStringLiteral("office")}, &o)
        || !o.contains(QStringLiteral("from")) || !o.contains(QStringLiteral("to")))
        return usage(c);
    int from = 0;
    int to = 0;
    if (!monthOption(o, QStringLiteral("from"), &from) || !monthOption(o, QStringLiteral("to"), &to)) {
        c.err(QStringLiteral("--from と --to には 1 から 12 の月を指定してください。"));
        return kBadArguments;
    }
    RebuildKind kind = RebuildKind::ALL;
    if (o.contains(QStringLiteral("kind")) && !parseRebuildKind(o.value(QStringLiteral("kind")), &kind)) {
        c.err(QStringLiteral("--kind には ALL、THI、TTO、TSI のいずれかを指定してください。"));
        return kBadArguments;
    }
    if (!officeOption(o, c, &office)) return kBadArguments;
    if (const int r = startHeadless(office, c)) return r;
    QString error;
    const bool ok = rebuildLedgers(kind, from, to, c.out, &error);
    if (!ok) c.err(error);
    endHeadless();
    return ok ? 0 : kFailed;
}

} // namespace

CommandConsole processConsole()
{
    CommandConsole c;
    c.out = [](const QString& s) {
        std::fputs(qPrintable(s + QLatin1Char('\n')), stdout);
        std::fflush(stdout);
    };
    c.err = [](const QString& s) {
        std::fputs(qPrintable(s + QLatin1Char('\n')), stderr);
        std::fflush(stderr);
    };
    c.readLine = [](QString* line) {
        std::string s;
        if (!std::getline(std::cin, s)) return false;
        *line = QString::fromLocal8Bit(s.data(), static_cast<qsizetype>(s.size()));
        if (line->endsWith(QLatin1Char('\r'))) line->chop(1);
        return true;
    };
    return c;
}

bool isLedgerCommand(const QString& word)
{
    return word == QLatin1String("batch") || word == QLatin1String("rebuild");
}

QString ledgerCommandsUsage()
{
    return QStringLiteral(
        "  velmora batch [--office N]   現在のフォルダの会社で台帳処理を行います\n"
        "  velmora rebuild --from M --to M [--kind ALL|THI|TTO|TSI] [--office N]\n"
        "                               伝票より台帳を再作成します (既定 ALL)\n"
        "    --office N  営業所コード (既定は最初の営業所)\n"
        "    パスワードは環境変数 VELMORA_PASSWORD、なければ標準入力の1行から読みます。\n"
        "    終了コード: 0 正常、1 処理の失敗、2 指定の誤り");
}

int runLedgerCommand(const QStringList& args, const CommandConsole& console)
{
    if (args.isEmpty()) return usage(console);
    HeadlessDialogs dialogs(console);
    if (args.first() == QLatin1String("batch")) return runBatch(args, console);
    if (args.first() == QLatin1String("rebuild")) return runRebuild(args, console);
    return usage(console);
}

int startHeadless(short office, const CommandConsole& console)
{
    HeadlessDialogs dialogs(console);
    MenuModel menu;
    const StartupResult r = runStartup(menu);
    if (r.kind == StartupResult::StopSilently) {
        console.err(QStringLiteral("この会社は他の Velmora で使用中です。終了してから実行してください。"));
        return kFailed;
    }
    if (r.kind != StartupResult::Run) return kFailed;
    if (office != 0) {
        if (const int e = selectOffice(office, console)) {
            endHeadless();
            return e;
        }
    }
    return 0;
}

void endHeadless()
{
    CloseStore();
    processInstanceLock().release();
}
