#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPrinter>
#include <QProcess>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include "entry/FormDriver.h"
#include "entry/Help_frm.h"
#include "pageout/QtPageOutputs.h"
#include "reports/InvoiceFixture.h"
#include "reports/Seikyu_frm.h"
#include "shell/Session.h"

namespace {
class InvoiceFormTest : public ::testing::Test {
protected:
    InvoiceCompany co;
    ScriptedDialogs dlg;
    QTemporaryDir tmp;
    QPointer<Seikyu_frm> form;
    int asked = 0;
    bool printerChosen = true;

    void SetUp() override
    {
        co.addHin("1001", "ボールペン");
        co.addTor(1001, "東京商事");
        co.addTor(1002, "大阪物産");
        co.sale(1, QDate(2026, 5, 10), 1001, 0, 5, {{"1001", 10, 120}});
        co.sale(2, QDate(2026, 5, 11), 1002, 0, 5, {{"1001", 3, 120}});
        ledgerRun();
        // The printer is a PDF file, so what was printed can be read back.
        setPrinterChooser([this](QPrinter& p) {
            ++asked;
            p.setOutputFormat(QPrinter::PdfFormat);
            p.setOutputFileName(pdf());
            return printerChosen;
        });
    }
    void TearDown() override
    {
        if (form) form->close();
        flushDeletes();
        setPrinterChooser({});
    }
    QString pdf() const { return tmp.filePath("printer.pdf"); }
    void open()
    {
        form = new Seikyu_frm;
        ASSERT_TRUE(showActive(form));
        ASSERT_EQ(focused(), form->box(Seikyu_frm::MonthBox));
    }
    QString printed() const
    {
        QProcess p;
        p.start("pdftotext", {pdf(), "-"});
        p.waitForFinished(30000);
        return QString::fromUtf8(p.readAllStandardOutput()).normalized(QString::NormalizationForm_KC);
    }
    // Month, closing day, customers, and on through the issue date to "発 行".
    void typeRun(const QString& month, const QString& sime, const QString& from = {})
    {
        enter(month);
        enter(sime);
        enter(from);
        for (int i = 0; i < 4; ++i) press(Qt::Key_Return);
    }
};
}  // namespace

TEST_F(InvoiceFormTest, ClerkTypesTheDayAndACustomerAndPrintsItsInvoice)
{
    open();
    // A day out of range is refused with the focus back on it, before the printer is asked.
    typeRun("5", "32");
    press(Qt::Key_Return);
    EXPECT_EQ(dlg.of("Tell"), QStringList{"範囲は１から３１です。"});
    ASSERT_EQ(focused(), form->box(Seikyu_frm::SimeBox));
    EXPECT_EQ(asked, 0);
    enter("31");
    enter("1001");
    // Leaving "from" fills "to" and both names.
    EXPECT_EQ(form->box(Seikyu_frm::ToBox)->text().trimmed() + form->dTorNamae(0)->text() + form->dTorNamae(1)->text(),
              "1001東京商事東京商事");
    EXPECT_EQ(focused(), form->box(Seikyu_frm::ToBox));
    for (int i = 0; i < 4; ++i) press(Qt::Key_Return);
    ASSERT_EQ(focused(), form->Command());
    press(Qt::Key_Up);
    EXPECT_EQ(focused(), form->box(Seikyu_frm::DayBox));
    press(Qt::Key_Return);
    press(Qt::Key_Return);
    EXPECT_EQ(asked, 1);
    const QString text = printed();
    EXPECT_TRUE(text.contains("東京商事") && text.contains("1,320"));   // 1,200 and 120 of tax
    EXPECT_FALSE(text.contains("大阪物産"));
    // The form is a one-shot: what was typed stays, until F1 clears it.
    EXPECT_EQ(form->box(Seikyu_frm::MonthBox)->text().trimmed(), "5");
    press(Qt::Key_Up);
    press(Qt::Key_F1);
    EXPECT_EQ(form->box(Seikyu_frm::MonthBox)->text() + form->box(Seikyu_frm::ToBox)->text() + form->dTorNamae(0)->text(), "");
    EXPECT_EQ(focused(), form->box(Seikyu_frm::MonthBox));
    EXPECT_EQ(dlg.log.size(), 1) << qPrintable(dlg.log.join('\n'));
}

TEST_F(InvoiceFormTest, PreviewPagesAreReadWithTheOrdinaryCursor)
{
    session().PreviewMode = true;
    QList<bool> busy;
    setPreviewPageHook([&](QWidget* w) {
        QTimer::singleShot(0, w, [&busy, w] {
            busy << (QApplication::overrideCursor() != nullptr);
            w->close();
        });
    });
    open();
    typeRun("5", "31");
    press(Qt::Key_Return);
    setPreviewPageHook({});
    session().PreviewMode = false;
    // The printer is asked in preview mode too; then one page a customer, closed by the clerk.
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(busy, (QList<bool>{false, false}));
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(InvoiceFormTest, CancellingThePrinterOrTheStylePrintsNothing)
{
    exec("INSERT INTO zSysFunc (Code, contents) VALUES (395, '1:専用紙,2:控え')");
    open();
    printerChosen = false;
    typeRun("5", "31");
    press(Qt::Key_Return);
    EXPECT_EQ(asked, 1);
    // Esc in the style window ends the run; the style of the session stays.
    printerChosen = true;
    QTimer::singleShot(50, [] {
        if (QWidget* w = QApplication::activeModalWidget()) QTest::keyClick(w->focusWidget(), Qt::Key_Escape);
    });
    press(Qt::Key_Return);
    EXPECT_EQ(asked, 2);
    EXPECT_EQ(session().SeiStyle, 0);
    EXPECT_FALSE(QFile::exists(pdf()));
    EXPECT_TRUE(dlg.log.isEmpty()) << qPrintable(dlg.log.join('\n'));
}

TEST_F(InvoiceFormTest, IssueDateIsTodayInTheCompanysYearsAndEscCloses)
{
    const QDate today = QDate::currentDate();
    session().Hiz = 1;
    open();
    EXPECT_EQ(QStringList({form->box(Seikyu_frm::YearBox)->text().trimmed(), form->box(Seikyu_frm::IssueMonthBox)->text().trimmed(),
                           form->box(Seikyu_frm::DayBox)->text().trimmed()}),
              QStringList({QString::number(today.year() - 1988), QString::number(today.month()), QString::number(today.day())}));
    press(Qt::Key_Escape);
    flushDeletes();
    EXPECT_TRUE(form.isNull());
}

TEST_F(InvoiceFormTest, F6TakesAClassThenACustomerOfIt)
{
    exec("INSERT INTO Tbn (Code, Namae) VALUES (2, '小売')");
    exec("UPDATE Tor SET TbnCode = 2 WHERE Code = 1002");
    open();
    enter("5");
    enter("31");
    // The classes, the second one; then the customers of that class, the first one.
    QTimer::singleShot(0, [] {
        QTest::keyClick(HelpForm()->kana(), Qt::Key_Down);
        QTest::keyClick(HelpForm()->kana(), Qt::Key_Return);
        QTimer::singleShot(0, [] { QTest::keyClick(HelpForm()->kana(), Qt::Key_Return); });
    });
    press(Qt::Key_F6);
    ASSERT_TRUE(QTest::qWaitForWindowActive(form));
    EXPECT_EQ(form->box(Seikyu_frm::FromBox)->text().trimmed() + form->dTorNamae(0)->text() + form->box(Seikyu_frm::ToBox)->text().trimmed(),
              "1002大阪物産1002");
    EXPECT_EQ(focused(), form->box(Seikyu_frm::ToBox));
}
