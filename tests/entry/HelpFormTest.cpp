#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QTimer>

#include "entry/FormDriver.h"
#include "entry/Help_frm.h"
#include "entry/Utility.h"
#include "shell/Session.h"
#include "store/Sql.h"
#include "support/ScriptedDialogs.h"
#include "support/TempCompany.h"

namespace {

class HelpFormTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(company.open());
        for (int i = 1; i <= 16; ++i)
            execSql(session().MasterDb, "INSERT INTO Tbn (Code, Kana, Namae, Ryaku) VALUES (?, ?, ?, ?)",
                    {i, i % 2 ? QStringLiteral("ｱｵｲ%1").arg(i) : QStringLiteral("ｶｷ%1").arg(i),
                     QStringLiteral("得意先分類その%1").arg(i), QStringLiteral("分類%1").arg(i)});
        useJapaneseFonts();
    }
    TempCompany company;
    ScriptedDialogs dialogs;
};

TEST_F(HelpFormTest, PagesAndChoosesByKeyboard)
{
    Help_frm form;
    form.Init("Tbn", "", "");
    ASSERT_TRUE(showActive(&form));
    EXPECT_EQ(form.hNamae(14)->text(), "得意先分類その15");

    QTest::keyClick(form.kana(), Qt::Key_Down);
    QTest::keyClick(form.kana(), Qt::Key_PageDown);
    EXPECT_EQ(form.hCode(14)->text(), "16");
    EXPECT_EQ(form.hCode(1)->backgroundRole(), QPalette::Highlight);   // the highlight follows the row
    EXPECT_EQ(form.hCode(0)->backgroundRole(), QPalette::Window);

    form.kana()->setText("ｶ");
    QTest::keyClick(form.kana(), Qt::Key_Return);
    EXPECT_TRUE(form.isVisible());
    EXPECT_TRUE(form.kana()->text().isEmpty());
    EXPECT_EQ(form.hCode(0)->text(), "10");   // readings beginning with ｶ, by reading
    EXPECT_TRUE(form.hCode(8)->text().isEmpty());
    QTest::keyClick(form.kana(), Qt::Key_Down);
    QTest::keyClick(form.kana(), Qt::Key_Return);
    EXPECT_FALSE(form.isVisible());
    EXPECT_TRUE(form.Hit());
    EXPECT_EQ(form.HitCode(), "12");
    EXPECT_TRUE(dialogs.log.isEmpty());
}

TEST_F(HelpFormTest, EscapeGivesNoHit)
{
    Help_frm form;
    form.Init("Tbn", "", "");
    ASSERT_TRUE(showActive(&form));
    QTest::keyClick(form.kana(), Qt::Key_Escape);
    EXPECT_FALSE(form.isVisible());
    EXPECT_FALSE(form.Hit());
}

TEST_F(HelpFormTest, PostalCodeWithManyAddressesAsksThroughTheList)
{
    execSql(session().MasterDb, "INSERT INTO Zip (Code, Addr) VALUES (100, '千代田区丸の内'), (100, '千代田区大手町')");
    installHelpForm();
    QTimer::singleShot(0, [] {
        QTest::keyClick(HelpForm()->kana(), Qt::Key_Down);
        QTest::keyClick(HelpForm()->kana(), Qt::Key_Return);
    });
    const QString chosen = ZipAddress("100");
    EXPECT_TRUE(chosen == "千代田区丸の内" || chosen == "千代田区大手町");
    setZipChooser(nullptr);
}

}  // namespace
