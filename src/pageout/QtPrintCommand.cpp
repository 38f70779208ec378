#include "pageout/QtPrintCommand.h"
#include <QFile>
#include <QFileInfo>
#include <QMap>
#include <QTextStream>
#include "ledgers/LedgerCommands.h"
#include "pageout/PageOutput.h"
#include "pageout/PrintRegistry.h"
#include "pageout/QtPageOutputs.h"
#include "pageout/Vtml.h"
#include "shell/Dialogs.h"
#include "shell/Session.h"

namespace {

constexpr int kFailed = 1;
constexpr int kBadArguments = 2;

// The dialogs while a report prints without a screen: what would be told goes to standard
// error; a question is answered "no", since nobody is there to agree to anything.
class PrintDialogs : public Dialogs {
public:
    explicit PrintDialogs(const CommandConsole& c) : console_(c) { prev_ = setDialogs(this); }
    ~PrintDialogs() override { setDialogs(prev_); }
    PrintDialogs(const PrintDialogs&) = delete;
    PrintDialogs& operator=(const PrintDialogs&) = delete;
    bool Ask(const QString& m, const QString&, const QString& no) override
    {
        console_.err(m + QStringLiteral(" → ") + no);
        return false;
    }
    void Tell(const QString& m) override
    {
        console_.err(m);
        told_ = true;
    }
    QString Request(const QString&, const QString& d) override { return d; }
    void ShowWait(const QString&) override {}
    void HideWait() override {}
    void MessageBox(const QString& t, const QString& m) override { Tell(t + QStringLiteral(": ") + m); }
    bool told() const { return told_; }

private:
    CommandConsole console_;
    Dialogs* prev_ = nullptr;
    bool told_ = false;
};

QString usageText()
{
    QString s = QStringLiteral(
        "使い方: velmora print 帳票 [オプション] (--pdf ファイル | --xlsx ファイル) [--office N]\n"
        "帳票:\n");
    for (const PrintReportEntry& e : printReports()) {
        QStringList outs;
        if (e.pdf) outs << QStringLiteral("--pdf");
        if (e.xlsx) outs << QStringLiteral("--xlsx");
        s += QStringLiteral("  %1  %2  [%3]\n").arg(e.name, -12).arg(e.usage, outs.join(QLatin1Char('|')));
    }
    s += QStringLiteral(
        "会社のフォルダで実行します (vtml を除く)。--office N は営業所コード (既定は最初の営業所)。\n"
        "パスワードは環境変数 VELMORA_PASSWORD、なければ標準入力の1行から読みます。\n"
        "終了コード: 0 正常、1 印刷の失敗、2 指定の誤り");
    return s;
}

int badArguments(const CommandConsole& c, const QString& why)
{
    if (!why.isEmpty()) c.err(why);
    c.err(QStringLiteral("一覧は velmora print --help で表示します。"));
    return kBadArguments;
}

// "--name value" pairs; the name must be the report's or a common one, and given once.
bool readOptions(const QStringList& args, const PrintReportEntry& e, QMap<QString, QString>* opts, QString* why)
{
    const QStringList common = {QStringLiteral("pdf"), QStringLiteral("xlsx"), QStringLiteral("office")};
    for (qsizetype i = 2; i < args.size(); i += 2) {
        const QString name = args[i].mid(2);
        if (!args[i].startsWith(QLatin1String("--")) || (!common.contains(name) && !e.options.contains(name))) {
            *why = QStringLiteral("%1 には %2 という指定はありません。").arg(e.name, args[i]);
            return false;
        }
        if (i + 1 >= args.size()) {
            *why = QStringLiteral("%1 の後に値を指定してください。").arg(args[i]);
            return false;
        }
        if (opts->contains(name)) {
            *why = QStringLiteral("%1 が二度指定されています。").arg(args[i]);
            return false;
        }
        opts->insert(name, args[i + 1]);
    }
    return true;
}

bool checkOutputs(const PrintReportEntry& e, const QMap<QString, QString>& o, QString* why)
{
    const bool pdf = o.contains(QStringLiteral("pdf"));
    const bool xlsx = o.contains(QStringLiteral("xlsx"));
    if (pdf == xlsx) *why = QStringLiteral("--pdf ファイル か --xlsx ファイル のどちらか一つを指定してください。");
    else if (pdf && !e.pdf) *why = QStringLiteral("%1 は PDF には出力できません。--xlsx を指定してください。").arg(e.name);
    else if (xlsx && !e.xlsx) *why = QStringLiteral("%1 はエクセルファイルには出力できません。--pdf を指定してください。").arg(e.name);
    else if (o.value(pdf ? QStringLiteral("pdf") : QStringLiteral("xlsx")).trimmed().isEmpty())
        *why = QStringLiteral("出力するファイルの名前を指定してください。");
    return why->isEmpty();
}

bool officeOption(const QMap<QString, QString>& o, short* office, QString* why)
{
    *office = 0;
    if (!o.contains(QStringLiteral("office"))) return true;
    bool ok = false;
    const short v = o.value(QStringLiteral("office")).trimmed().toShort(&ok);
    if (!ok || v <= 0) {
        *why = QStringLiteral("--office には営業所コード（数字）を指定してください。");
        return false;
    }
    *office = v;
    return true;
}

// The report on its output; the start-up has been done when the report needs the company.
bool runReport(const PrintReportEntry& e, const PrintRequest& req, const CommandConsole& c)
{
    PrintDialogs dialogs(c);
    // Nothing waits on a window without a screen.
    session().PreviewMode = false;
    QString error;
    bool ok = false;
    if (!req.pdf.isEmpty()) {
        QString why;
        std::unique_ptr<PageOutput> out = makePdfOutput(req.pdf, &why);
        if (!out) {
            c.err(why);
            return false;
        }
        ok = printTo(*out, [&] { return e.run(req, &error); });
        if (ok) c.out(QStringLiteral("%1 に %2 ページを出力しました。").arg(QFileInfo(req.pdf).absoluteFilePath()).arg(out->pages()));
    } else {
        ok = e.run(req, &error);
        if (ok) c.out(QStringLiteral("%1 を作成しました。").arg(QFileInfo(req.xlsx).absoluteFilePath()));
    }
    if (!ok && !error.isEmpty()) c.err(error);
    if (!ok && error.isEmpty() && !dialogs.told()) c.err(QStringLiteral("印刷できませんでした。"));
    return ok;
}

bool printVtmlFile(const PrintRequest& req, QString* error)
{
    if (req.checkOnly) return true;
    const QString in = req.options.value(QStringLiteral("in"));
    QFile f(in);
    if (in.isEmpty() || !f.open(QIODevice::ReadOnly | QIODevice::Text)) {
        *error = QStringLiteral("入力ファイル %1 を読めません。").arg(in);
        return false;
    }
    QTextStream s(&f);
    VtmlClear();
    QString line;
    while (s.readLineInto(&line)) VtmlAddLine(line);
    return VtmlPrint();
}

}  // namespace

void registerVtmlPrintReport()
{
    PrintReportEntry e;
    e.name = QStringLiteral("vtml");
    e.usage = QStringLiteral("--in FILE  ページ記述の行を並べたテキストファイル (UTF-8) を印刷します");
    e.options = {QStringLiteral("in")};
    e.required = {QStringLiteral("in")};
    e.needsCompany = false;
    e.run = printVtmlFile;
    registerPrintReport(e);
}

int runPrintCommand(const QStringList& args, const CommandConsole& c)
{
    if (args.size() < 2) return badArguments(c, QStringLiteral("帳票の名前を指定してください。"));
    if (args[1] == QLatin1String("--help") || args[1] == QLatin1String("-h")) {
        c.out(usageText());
        return 0;
    }
    const PrintReportEntry* e = findPrintReport(args[1]);
    if (!e) return badArguments(c, QStringLiteral("%1 という帳票はありません。").arg(args[1]));
    QMap<QString, QString> o;
    QString why;
    short office = 0;
    if (!readOptions(args, *e, &o, &why) || !checkOutputs(*e, o, &why) || !officeOption(o, &office, &why))
        return badArguments(c, why);
    for (const QString& r : e->required)
        if (!o.contains(r)) return badArguments(c, QStringLiteral("%1 には --%2 を指定してください。").arg(e->name, r));

    PrintRequest req;
    req.pdf = o.take(QStringLiteral("pdf"));
    req.xlsx = o.take(QStringLiteral("xlsx"));
    o.remove(QStringLiteral("office"));
    req.options = o;
    // A value the report refuses is a wrong command, told before any start-up asks a password.
    PrintRequest check = req;
    check.checkOnly = true;
    QString refused;
    if (!e->run(check, &refused)) return badArguments(c, refused);
    if (e->needsCompany) {
        if (const int r = startHeadless(office, c)) return r;
    }
    const bool ok = runReport(*e, req, c);
    if (e->needsCompany) endHeadless();
    return ok ? 0 : kFailed;
}
