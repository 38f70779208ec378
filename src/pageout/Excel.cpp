#include "pageout/Excel.h"
#include <cstdio>
#include <xlsxwriter.h>
#include <QDate>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QMap>
#include <QProcess>
#include <QTemporaryFile>
#include <sys/stat.h>
#include <QTextStream>
#include "pageout/PageOutput.h"
#include "pageout/ReportRows.h"
#include "shell/Dialogs.h"

namespace {

const char* kXlsxType = "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet";

std::function<bool(const QString&)>& opener()
{
    static std::function<bool(const QString&)> f;
    return f;
}

// The desktop's program for spreadsheets, when the desktop names one.
bool openOnDesktop(const QString& path)
{
    QProcess query;
    query.start(QStringLiteral("xdg-mime"), {QStringLiteral("query"), QStringLiteral("default"), QString::fromLatin1(kXlsxType)});
    if (!query.waitForFinished(5000) || query.exitCode() != 0) {
        query.kill();
        return false;
    }
    if (QString::fromLocal8Bit(query.readAllStandardOutput()).trimmed().isEmpty()) return false;
    return QProcess::startDetached(QStringLiteral("xdg-open"), {path});
}

bool isDateFormat(const QString& format)
{
    const QString f = format.toLower();
    return f.contains(QLatin1Char('y')) || f.contains(QLatin1Char('d'));
}

QDate dateOfText(const QString& text)
{
    const QString t = text.trimmed();
    QDate d = QDate::fromString(t, QStringLiteral("yyyy-MM-dd"));
    if (!d.isValid()) d = QDate::fromString(t, QStringLiteral("yyyy/M/d"));
    return d;
}

lxw_datetime lxwDate(const QDateTime& t)
{
    const QDate d = t.date();
    const QTime tm = t.time();
    return lxw_datetime{d.year(), d.month(), d.day(), tm.hour(), tm.minute(), tm.second() + tm.msec() / 1000.0};
}

}  // namespace

struct ExcelBook::Impl {
    struct Cell {
        QVariant value;
        QString format;
    };
    QMap<QPair<int, int>, Cell> cells;
    bool waiting = false;

    bool write(const QString& path, QString* error) const;
};

bool ExcelBook::Impl::write(const QString& path, QString* error) const
{
    const QString target = QFileInfo(path).absoluteFilePath();
    const QString folder = QFileInfo(target).absolutePath();
    auto failed = [&] {
        if (error) *error = QStringLiteral("エラー：エクセルファイルを保存できませんでした。（%1）%2").arg(target, fileWriteReason(target));
        return false;
    };
    if (QFileInfo(target).isDir() || !QFileInfo(folder).isDir()) return failed();
    // A name of our own beside the target: the rename at the end is then one step.
    QTemporaryFile reserve(folder + QStringLiteral("/.velmora-XXXXXX.xlsx"));
    if (!reserve.open()) return failed();
    const QString temp = reserve.fileName();
    reserve.close();

    const QByteArray tempName = QFile::encodeName(temp);
    lxw_workbook* wb = workbook_new(tempName.constData());
    if (!wb) return failed();
    lxw_worksheet* ws = workbook_add_worksheet(wb, nullptr);
    QHash<QString, lxw_format*> formats;
    auto formatOf = [&](const QString& f) -> lxw_format* {
        if (f.isEmpty()) return nullptr;
        if (!formats.contains(f)) {
            lxw_format* fmt = workbook_add_format(wb);
            format_set_num_format(fmt, f.toUtf8().constData());
            formats.insert(f, fmt);
        }
        return formats.value(f);
    };
    for (auto it = cells.constBegin(); it != cells.constEnd(); ++it) {
        const lxw_row_t r = lxw_row_t(it.key().first - 1);
        const lxw_col_t c = lxw_col_t(it.key().second - 1);
        const QVariant& v = it->value;
        lxw_format* fmt = formatOf(it->format);
        if (v.isNull() || !v.isValid()) {
            if (fmt) worksheet_write_blank(ws, r, c, fmt);
            continue;
        }
        if (isMoneyVariant(v)) {
            worksheet_write_number(ws, r, c, v.value<Money>().toDouble(), fmt);
            continue;
        }
        if (isNumberVariant(v)) {
            worksheet_write_number(ws, r, c, v.toDouble(), fmt);
            continue;
        }
        switch (v.typeId()) {
        case QMetaType::Bool:
            worksheet_write_boolean(ws, r, c, v.toBool() ? 1 : 0, fmt);
            break;
        case QMetaType::QDate:
        case QMetaType::QDateTime: {
            // A date given without a format would show as a bare serial number.
            lxw_datetime dt = lxwDate(v.toDateTime());
            worksheet_write_datetime(ws, r, c, &dt, fmt ? fmt : formatOf(QStringLiteral("yyyy/m/d")));
            break;
        }
        default: {
            const QString text = v.toString();
            const QDate d = fmt && isDateFormat(it->format) ? dateOfText(text) : QDate();
            if (d.isValid()) {
                lxw_datetime dt = lxwDate(d.startOfDay());
                worksheet_write_datetime(ws, r, c, &dt, fmt);
            } else {
                worksheet_write_string(ws, r, c, text.toUtf8().constData(), fmt);
            }
        }
        }
    }
    const lxw_error e = workbook_close(wb);
    if (e != LXW_NO_ERROR) {
        QFile::remove(temp);
        return failed();
    }
    // The reserved name is private to us; the sheet itself is for every station that may open
    // the folder, so it takes the permissions any new file of this user gets.
    const mode_t mask = ::umask(0);
    ::umask(mask);
    ::chmod(tempName.constData(), 0666 & ~mask);
    if (std::rename(tempName.constData(), QFile::encodeName(target).constData()) != 0) {
        QFile::remove(temp);
        return failed();
    }
    return true;
}

ExcelBook::ExcelBook() : d(std::make_unique<Impl>()) {}

ExcelBook::~ExcelBook()
{
    if (d->waiting) HideWait();
}

bool ExcelBook::open()
{
    ShowWait(QStringLiteral("エクセルファイルを作成しています。"));
    d->waiting = true;
    d->cells.clear();
    // A new sheet starts with one blank in A1, as exports always have; a caller may overwrite it.
    setCell(1, 1, QStringLiteral(" "));
    return true;
}

void ExcelBook::setCell(int row, int column, const QVariant& value)
{
    if (row < 1 || column < 1) return;
    d->cells[{row, column}].value = value;
}

void ExcelBook::setFormat(int row, int column, const QString& format)
{
    if (row < 1 || column < 1) return;
    d->cells[{row, column}].format = format;
}

bool ExcelBook::saveAs(const QString& path, QString* error)
{
    return d->write(path, error);
}

bool ExcelBook::save(const QString& name, QString* path, QString* error)
{
    if (d->waiting) {
        HideWait();
        d->waiting = false;
    }
    QString file = excelFileName(name);
    // Two exports within one second would share a name: the earlier file is kept.
    const QString stem = file.chopped(5);
    for (int n = 2; QFileInfo::exists(file); ++n) file = stem + QStringLiteral("(%1).xlsx").arg(n);
    if (path) *path = QFileInfo(file).absoluteFilePath();
    QString why;
    if (!d->write(file, &why)) {
        if (error) *error = why;
        Tell(why);
        return false;
    }
    const QString shown = QDir::toNativeSeparators(QFileInfo(file).absoluteFilePath());
    const bool opened = opener() ? opener()(shown) : openOnDesktop(shown);
    if (!opened) Tell(QStringLiteral("エクセルファイルを保存しました。\n%1").arg(shown));
    return true;
}

QString excelFileName(const QString& name)
{
    QString folder;
    QFile f(QStringLiteral("PathExcel"));
    if (f.open(QIODevice::ReadOnly | QIODevice::Text)) {
        QTextStream in(&f);
        folder = in.readLine().trimmed();
    }
    // A folder written without its last separator still means that folder.
    if (!folder.isEmpty() && !folder.endsWith(QLatin1Char('/')) && !folder.endsWith(QLatin1Char('\\')))
        folder += QLatin1Char('/');
    return folder + name + QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMddhhmmss")) + QStringLiteral(".xlsx");
}

void setSpreadsheetOpener(std::function<bool(const QString&)> f) { opener() = std::move(f); }
