#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QPointer>

#include "entry/FormDriver.h"
#include "shell/Session.h"
#include "masters/Opt_frm.h"
#include "store/Sql.h"
#include "masters/SysFunc_frm.h"
#include "support/ScriptedDialogs.h"
#include "support/TempCompany.h"

namespace {

class SystemFormsTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(company.open()); }
    void TearDown() override { flushDeletes(); }
    QVariant contents(int code) { return scalar(session().MasterDb, "SELECT contents FROM zSysFunc WHERE Code = ?", {code}); }
    QVariant option(int code) { return scalar(session().MasterDb, "SELECT contents FROM UserOP WHERE Code = ?", {code}); }
    TempCompany company;
    ScriptedDialogs dialogs;
};

TEST_F(SystemFormsTest, SysFuncFindsAddsAndDeletesRows)
{
    QPointer<SysFunc_frm> form = new SysFunc_frm;
    ASSERT_TRUE(showActive(form));
    QLineEdit* code = form->ebox()[0];
    QLineEdit* text = form->ebox()[1];

    typeText("1");
    press(Qt::Key_Return);                 // found: shown, the focus stays
    EXPECT_EQ(text->text(), "1");
    EXPECT_EQ(focused(), code);
    EXPECT_EQ(form->mode()->text(), "参照");
    press(Qt::Key_Return);
    EXPECT_EQ(code->text(), "       1");
    ASSERT_EQ(focused(), text);
    enter("1.5");
    press(Qt::Key_Return);                 // RecField: save and clear
    EXPECT_EQ(contents(1).toString(), "1.5");
    EXPECT_TRUE(code->text().isEmpty());

    typeText("825");
    press(Qt::Key_Return);                 // not found: a new row under that code
    EXPECT_EQ(form->mode()->text(), "新規");
    EXPECT_EQ(code->text(), "     825");
    ASSERT_EQ(focused(), text);
    typeText("Mexico");
    press(Qt::Key_F10);                    // the screen stays after F10
    EXPECT_EQ(contents(825).toString(), "Mexico");
    EXPECT_EQ(text->text(), "Mexico");
    EXPECT_EQ(form->mode()->text(), "参照");

    press(Qt::Key_Up);
    press(Qt::Key_F1);
    enter("825");
    dialogs.askAnswers = {false, true};
    press(Qt::Key_F2);
    EXPECT_TRUE(contents(825).isValid());
    press(Qt::Key_F2);
    EXPECT_EQ(dialogs.of("Ask"), QStringList(2, "コード : 825\n\nMexico\n\nを削除してよろしいですか？"));
    EXPECT_FALSE(contents(825).isValid());
    EXPECT_TRUE(text->text().isEmpty());
    delete form;
}

TEST_F(SystemFormsTest, OptionsReadSaveAndClose)
{
    QPointer<Opt_frm> form = new Opt_frm;
    ASSERT_TRUE(showActive(form));
    EXPECT_TRUE(form->ebox()[0]->text().isEmpty());   // both rows missing
    EXPECT_TRUE(form->ebox()[1]->text().isEmpty());
    enter("d:\\backup\\shop");
    enter("1");
    press(Qt::Key_Return);
    EXPECT_EQ(option(5).toString(), "d:\\backup\\shop");
    EXPECT_EQ(option(15).toString(), "1");
    flushDeletes();
    EXPECT_TRUE(form.isNull());

    form = new Opt_frm;
    ASSERT_TRUE(showActive(form));
    EXPECT_EQ(form->ebox()[0]->text(), "d:\\backup\\shop");
    EXPECT_EQ(form->ebox()[1]->text(), "1");
    form->ebox()[0]->clear();              // an empty path is stored as one blank
    press(Qt::Key_F10);
    EXPECT_EQ(option(5).toString(), " ");
    flushDeletes();
    EXPECT_TRUE(form.isNull());
    EXPECT_TRUE(dialogs.log.isEmpty());
}

}  // namespace
