#include "store/Schema.h"
#include <QSqlError>
#include <QSqlQuery>

namespace {

// "Code:L Kana:T10" -> columns
QList<ColumnDef> cols(const char* layout)
{
    QList<ColumnDef> out;
    for (const QString& part : QString::fromLatin1(layout).split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const int colon = part.indexOf(QLatin1Char(':'));
        ColumnDef c{part.left(colon), part.at(colon + 1).toLatin1(), 0};
        if (c.type == 'T') c.width = part.mid(colon + 2).toInt();
        out << c;
    }
    return out;
}

QStringList keys(const char* names) { return QString::fromLatin1(names).split(QLatin1Char(' '), Qt::SkipEmptyParts); }

const char* kSimple = "Code:S Kana:T10 Namae:T20 Ryaku:T10";
const char* kMoney12 = "Zenkaigaku:M Gaku:M HGaku:M NGaku:M KGaku:M Zeigaku:M KTotal:M "
                       "Genkin:M Kogite:M Furikomi:M Tegata:M Sousai:M Chousei:M NTotal:M Point:L";
const char* kSalesHead = "Dno:L EigCode:S Hizuke:D TanCode:S TbnCode:S TorCode:L TorCodeSei:L "
                         "NouCode:L Tekiyo:T32 SNo:L Kubun:S";
const char* kLineTail = "HinCode:T13 HinNamae:T30 Suu:L UTanka:M UGaku:M STanka:M sGaku:M "
                        "ZeiFlag:S ZeiGaku:M Getudo:S ThiFlag:S";
const char* kSlipIdx = "ThiFlag Getudo HinCode";

QString join(std::initializer_list<const char*> parts)
{
    QStringList l;
    for (const char* p : parts) l << QString::fromLatin1(p);
    return l.join(QLatin1Char(' '));
}

TableDef def(const char* name, StoreFile f, const QString& columns, const char* key,
             const char* idx = "")
{
    return TableDef{QString::fromLatin1(name), f, cols(columns.toLatin1().constData()), keys(key), keys(idx)};
}

QList<TableDef> build()
{
    using F = StoreFile;
    const QString tor = join({"Code:L TbnCode:S Kana:T10 Namae:T20 Ryaku:T10 Tenmei:T20 ChiCode:S",
        "Ttantou:T10 KeishoCode:S Tel:T12 Fax:T12 Yubin:T8 Addr1:T30 Addr2:T30 TanCode:S RCode:S",
        "Zeituuchi:S HsuType:S Hsu:S Sime:S Shicode:S KTuki:S KHi:S UMax:M CkuCode:S Seikyu:L BankCode:S"});
    const QString sir = join({"Code:L SbnCode:S Kana:T10 Namae:T20 Tenmei:T20 Ryaku:T10 ChiCode:S",
        "Stantou:T10 KeishoCode:S Tel:T12 Fax:T12 Yubin:T8 Addr1:T30 Addr2:T30 Zeituuchi:S HsuType:S",
        "Hsu:S Shicode:S TanCode:S CkuCode:S SimeFlag:S Sime:S Bank:T20 Mise:T20 Shurui:S Koza:T10",
        "BKana:T20 FCode:S aCode:S Tesuryo:S Saito:S Shiharai:L"});
    const QString nou = join({"TorCode:L Code:L Kana:T10 Namae:T20 Ryaku:T10 Tenmei:T20 ChiCode:S",
        "Ntantou:T10 KeishoCode:S Yubin:T8 Addr1:T30 Addr2:T30 Tel:T12 Fax:T12 SeiFlag:S CkuCode:S"});
    QString com = join({"Kaisya:T20 Tenmei:T20 Ryaku:T10 Tel:T12 Fax:T12 Yubin:T8 Addr1:T30 Addr2:T30",
        "sTuki:S Ki:S SKai:T8 EKai:T8 Sime:S sDate:S Zeituuchi:S HsuType:S Hsu:S Hiz:S",
        "Kake1:M Kake2:M Kake3:M Kake4:M Kake5:M Zeiritu:M"});
    for (int i = 1; i <= 4; ++i)
        com += QStringLiteral(" Bank%1:T20 Mise%1:T20 shurui%1:S koza%1:T10").arg(i);

    const QString dud = QStringLiteral("Dno:L Eda:S EigCode:S Kubun:S Hizuke:D TorCode:L ") + QString::fromLatin1(kLineTail);
    const QString dsd = QStringLiteral("Dno:L Eda:S EigCode:S Kubun:S Hizuke:D SirCode:L ") + QString::fromLatin1(kLineTail);
    const QString dsr = QStringLiteral("Dno:L EigCode:S Hizuke:D TanCode:S SbnCode:S SirCode:L Tekiyo:T32 SNo:L Kubun:S");
    const QString thi = join({"HinCode:T13 HinNamae:T30 SizCode:S SizNamae:T20 Kata:T20",
        "BgrCode:S BgrNamae:T20 BumCode:S BumNamae:T20 DaiCode:S DaiNamae:T20 ChuCode:S ChuNamae:T20",
        "ShoCode:S ShoNamae:T20 MakCode:S MakNamae:T20 TanCode:S TanNamae:T20 HbnCode:S Nendo:L",
        "ETuki:S Ehi:S Zan:L Kurikoshi:L EigCode:S Tn1Code:S Tn2Code:S"});
    const QString thid = join({"HinCode:T13 EigCode:S Getudo:S SSuu:L SGaku:M SHGaku:M SNGaku:M SKGaku:M",
        "STotal:M USuu:L UGaku:M UHGaku:M UNGaku:M UKGaku:M UTotal:M ZSuu:L TSuu:L KSuu:L"});

    return {
        // master file
        def("Tor", F::Master, tor, "Code", "Kana"),
        def("Sir", F::Master, sir, "Code", "Kana"),
        def("Nou", F::Master, nou, "TorCode Code"),
        def("Hin", F::Master, "Code:T13 HbnCode:S Kana:T10 Namae:T30 Ryaku:T10 ZeiFlag:S UTanka:M STanka:M ZaiFlag:S", "Code", "Kana"),
        def("Tka", F::Master, "TorCode:L HinCode:T13 Tanka:M", "TorCode HinCode"),
        def("Nka", F::Master, "TorCode:L NouCode:L HinCode:T13 Tanka:M", "TorCode NouCode HinCode"),
        def("Ska", F::Master, "SirCode:L HinCode:T13 Tanka:M", "SirCode HinCode"),
        def("Siz", F::Master, "HinCode:T13 Code:S Teika:M", "HinCode Code"),
        def("Tbn", F::Master, kSimple, "Code"),
        def("Sbn", F::Master, kSimple, "Code"),
        def("Hbn", F::Master, kSimple, "Code"),
        def("Cku", F::Master, kSimple, "Code"),
        def("Chi", F::Master, kSimple, "Code"),
        def("Tan", F::Master, QString::fromLatin1(kSimple) + " TanLevel:S", "Code"),
        def("Tni", F::Master, "Code:S Namae:T20", "Code"),
        def("Com", F::Master, com, ""),
        def("Eig", F::Master, "Code:S Namae:T20 DurNo:L DsrNo:L DshNo:L DnyNo:L SeikyuNo:L", "Code"),
        def("zSysFunc", F::Master, "Code:L contents:T50", "Code"),
        def("UserOP", F::Master, "Code:L contents:T255", "Code"),
        def("Tek", F::Master, "Tekiyo:T36", ""),
        def("Zip", F::Master, "Code:L Addr:T60", "", "Code"),
        def("Zip7", F::Master, "Code:L Addr:T60", "", "Code"),
        // slip file
        def("Dur", F::Slip, kSalesHead, "Dno EigCode", "TorCode"),
        def("Dud", F::Slip, dud, "Dno Eda EigCode", "ThiFlag Getudo TorCode,Getudo HinCode"),
        def("Dsr", F::Slip, dsr, "Dno EigCode", "SirCode"),
        def("Dsd", F::Slip, dsd + " SizNamae:T20 IriSuu:L TniCode:S", "Dno Eda EigCode", "ThiFlag Getudo SirCode,Getudo HinCode"),
        def("Dny", F::Slip, "Dno:L Eda:S EigCode:S Hizuke:D TanCode:S TbnCode:S TorCode:L NouCode:L Kubun:S Nnaiyo:T30 NGaku:M NNo:L Getudo:S",
            "Dno Eda EigCode", "Getudo TorCode"),
        def("Dsh", F::Slip, "Dno:L Eda:S EigCode:S Hizuke:D TanCode:S SbnCode:S SirCode:L Kubun:S Snaiyo:T30 sGaku:M SNo:L Getudo:S",
            "Dno Eda EigCode", "Getudo SirCode"),
        def("Dcr", F::Slip, kSalesHead, "Dno EigCode", "TorCode"),
        def("Dcd", F::Slip, dud, "Dno Eda EigCode", kSlipIdx),
        // orders placed are kept by supplier, so their rows carry the supplier columns too
        def("Dhr", F::Slip, QString::fromLatin1(kSalesHead) + " SbnCode:S SirCode:L", "Dno EigCode", "SirCode"),
        def("Dhd", F::Slip, dud + " SirCode:L", "Dno Eda EigCode", kSlipIdx),
        def("Mit", F::Slip, kSalesHead, "Dno EigCode", "TorCode"),
        def("Mtd", F::Slip, dud, "Dno Eda EigCode", kSlipIdx),
        def("Thi", F::Slip, thi, "HinCode SizCode EigCode"),
        def("ThiD", F::Slip, thid, "HinCode EigCode Getudo", "Getudo"),
        def("Tto", F::Slip, "TorCode:L NouCode:L EigCode:S TorNamae:T20 TbnCode:S TbnNamae:T20 NouNamae:T20 Sime:S SeiFlag:S Nendo:L Zan:M",
            "TorCode NouCode EigCode"),
        def("TtoD", F::Slip, QStringLiteral("TorCode:L NouCode:L EigCode:S Getudo:S Nendo:L ") + QString::fromLatin1(kMoney12),
            "TorCode NouCode EigCode Getudo", "Getudo"),
        def("Tsi", F::Slip, "SirCode:L EigCode:S SirNamae:T20 SbnCode:S SbnNamae:T20 Sime:S Nendo:L Zan:M", "SirCode EigCode"),
        def("TsiD", F::Slip, QStringLiteral("SirCode:L EigCode:S Getudo:S Nendo:L ") + QString::fromLatin1(kMoney12),
            "SirCode EigCode Getudo", "Getudo"),
        def("Mei", F::Slip, dud + " IriSuu:L SizCode:S SizNamae:T20 TniCode:S NouCode:L Ngaku:M Nnaiyo:T30 UriFlag:T1", ""),
        def("MeiT", F::Slip, "Code:L Namae:T30 UGaku:M NGaku:M HGaku:M KGaku:M SGaku:M Arari:M", ""),
    };
}

QString sqlType(char t)
{
    return (t == 'T' || t == 'D') ? QStringLiteral("TEXT") : QStringLiteral("INTEGER");
}

} // namespace

const ColumnDef* TableDef::column(const QString& col) const
{
    for (const ColumnDef& c : columns)
        if (c.name.compare(col, Qt::CaseInsensitive) == 0) return &c;
    return nullptr;
}

const QList<TableDef>& storeTables()
{
    static const QList<TableDef> tables = build();
    return tables;
}

const TableDef* findTableDef(const QString& name)
{
    for (const TableDef& t : storeTables())
        if (t.name.compare(name.trimmed(), Qt::CaseInsensitive) == 0) return &t;
    return nullptr;
}

QStringList createStatements(const TableDef& t, const QString& schema)
{
    const QString prefix = schema.isEmpty() ? QString() : schema + QLatin1Char('.');
    QStringList parts;
    for (const ColumnDef& c : t.columns) {
        QString col = c.name + QLatin1Char(' ') + sqlType(c.type);
        // Key columns never hold NULL; a size code left open is size 0.
        if (t.key.contains(c.name, Qt::CaseInsensitive))
            col += (c.type == 'T') ? QStringLiteral(" NOT NULL") : QStringLiteral(" NOT NULL DEFAULT 0");
        parts << col;
    }
    if (!t.key.isEmpty())
        parts << QStringLiteral("PRIMARY KEY (%1)").arg(t.key.join(QStringLiteral(", ")));
    QStringList out;
    out << QStringLiteral("CREATE TABLE %1%2 (%3) STRICT").arg(prefix, t.name, parts.join(QStringLiteral(", ")));
    // "A,B" is one index over both columns (partner then month: the ledger postings' lookups).
    for (const QString& ix : t.indexes)
        out << QStringLiteral("CREATE INDEX %1ix_%2_%3 ON %2 (%4)")
                   .arg(prefix, t.name, QString(ix).replace(QLatin1Char(','), QLatin1Char('_')),
                        QString(ix).replace(QLatin1Char(','), QStringLiteral(", ")));
    return out;
}

bool createTables(QSqlDatabase db, StoreFile file, QString* error)
{
    QSqlQuery q(db);
    if (!db.transaction()) {
        if (error) *error = db.lastError().text();
        return false;
    }
    for (const TableDef& t : storeTables()) {
        if (t.file != file) continue;
        for (const QString& s : createStatements(t)) {
            if (!q.exec(s)) {
                if (error) *error = q.lastError().text() + QStringLiteral(" [") + s + QLatin1Char(']');
                db.rollback();
                return false;
            }
        }
    }
    return db.commit();
}
