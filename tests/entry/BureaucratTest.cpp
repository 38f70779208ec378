#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>

#include "entry/FormDriver.h"
#include "entry/QtChoiceLists.h"
#include "entry/QtEntryForm.h"
#include "shell/Session.h"
#include "store/Sql.h"
#include "support/TempCompany.h"

namespace {

// A form without a code of its own: text, number and list fields, one of them hidden.
class ProbeForm : public EntryForm {
public:
    ProbeForm()
    {
        buildForm("probe",
                  {{"コード", "00_N####0", "Code"},
                   {"名前", "01_S10", "Namae"},
                   {"税区分", "02*", "ZeiFlag"},
                   {"メモ", "03_S10", "Memo"},
                   {"敬称", "04", "KeishoCode"},
                   {"数量", "05_N##,##0.00", "Suu"}},
                  false, false);
        SetListZei(cbox()[0]);
        SetListKeisho(cbox()[1]);
        bu_.setVisibleFalse("E", 2);
    }
    void Register(const QString& mode) override { calls << "Register:" + mode; }
    bool deleteRec() override { calls << "deleteRec"; return true; }
    void clearDisplay() override { calls << "clearDisplay"; }
    QStringList calls;
};

class BureaucratTest : public ::testing::Test {
protected:
    void SetUp() override
    {
        form = new ProbeForm;
        ASSERT_TRUE(showActive(form));
        ASSERT_EQ(focused(), box(0));
    }
    void TearDown() override
    {
        delete form;
        flushDeletes();
    }
    QLineEdit* box(int i) const { return form->ebox()[i]; }
    QComboBox* list(int i) const { return form->cbox()[i]; }
    QPointer<ProbeForm> form;
};

TEST_F(BureaucratTest, KeysWalkTheItemsAndSkipTheHiddenOne)
{
    struct Step { Qt::Key key; Qt::KeyboardModifiers mods; QWidget* expected; } steps[] = {
        {Qt::Key_Tab, Qt::ShiftModifier, box(0)},                       // Shift+Tab at the first item stays
        {Qt::Key_Backtab, Qt::ShiftModifier, box(0)},
        {Qt::Key_Return, {}, box(1)},
        {Qt::Key_Down, {}, list(0)},
        {Qt::Key_Tab, {}, list(1)},                                      // item 3 is hidden
        {Qt::Key_Tab, Qt::ShiftModifier | Qt::ControlModifier, box(3)},  // only Shift alone means back
        {Qt::Key_Enter, {}, form->RecField()},
        {Qt::Key_Up, {}, box(3)},                                        // RecField: back to the last item
        {Qt::Key_Up, {}, list(1)},
        {Qt::Key_Up, {}, list(0)},
        {Qt::Key_Tab, Qt::ShiftModifier, box(1)},
        {Qt::Key_Up, {}, box(0)},
    };
    int n = 0;
    for (const Step& s : steps) {
        press(s.key, s.mods);
        EXPECT_EQ(focused(), s.expected) << "step " << n;
        ++n;
    }
    EXPECT_TRUE(form->calls.isEmpty());
    EXPECT_FALSE(box(2)->isVisible());
}

TEST_F(BureaucratTest, FieldsAreNormalisedWhenLeftByKey)
{
    enter("12");
    EXPECT_EQ(box(0)->text(), "   12");
    typeText("あいうえおかきくけこ");   // twenty bytes into a field of ten
    press(Qt::Key_Return);
    EXPECT_EQ(box(1)->text(), "あいうえお");
    press(Qt::Key_Return);
    press(Qt::Key_Return);
    enter("¥1,234.5");
    EXPECT_EQ(box(3)->text(), " 1,234.50");
    press(Qt::Key_Up);
    typeText("abc");
    press(Qt::Key_Up);
    EXPECT_EQ(box(3)->text(), "     0.00");
}

TEST_F(BureaucratTest, ChoiceListKeys)
{
    press(Qt::Key_Return);
    press(Qt::Key_Return);
    ASSERT_EQ(focused(), list(0));
    EXPECT_EQ(list(0)->currentIndex(), 0);    // a fixed list starts on its first entry

    press(Qt::Key_Down);                      // arrows move between items, not entries
    press(Qt::Key_Up);
    ASSERT_EQ(focused(), list(0));
    EXPECT_EQ(list(0)->currentIndex(), 0);
    press(Qt::Key_PageDown);                  // Page Down switches the entry
    EXPECT_EQ(list(0)->currentIndex(), 1);

    press(Qt::Key_F2);                        // no deleting from a list
    EXPECT_TRUE(form->calls.isEmpty());
    EXPECT_EQ(focused(), list(0));
    EXPECT_EQ(list(0)->currentIndex(), 1);

    press(Qt::Key_1);                         // the main keyboard's digits do not pick a code
    press(Qt::Key_Return);
    EXPECT_EQ(list(0)->currentIndex(), 1);
    ASSERT_EQ(focused(), list(1));
    press(Qt::Key_Up);
    press(Qt::Key_3, Qt::KeypadModifier);     // the keypad's do
    press(Qt::Key_Return);
    EXPECT_EQ(list(0)->currentText(), "非課税");
    press(Qt::Key_Up);
    press(Qt::Key_1, Qt::KeypadModifier);
    press(Qt::Key_2, Qt::KeypadModifier);     // "12": no such code
    press(Qt::Key_Return);
    EXPECT_EQ(list(0)->currentIndex(), -1);

    ASSERT_EQ(focused(), list(1));
    list(1)->setCurrentIndex(1);
    press(Qt::Key_Delete);                    // a list without "*" empties
    EXPECT_EQ(list(1)->currentIndex(), -1);
    press(Qt::Key_Up);
    press(Qt::Key_Delete);                    // one with "*" goes back to its first entry
    EXPECT_EQ(list(0)->currentIndex(), 0);
}

TEST_F(BureaucratTest, FunctionKeysWithoutAutoCode)
{
    enter("7");
    typeText("名前");
    list(1)->setCurrentIndex(1);
    press(Qt::Key_F10);
    EXPECT_EQ(form->calls, QStringList({"Register:VIEW"}));
    EXPECT_EQ(box(1)->text(), "名前");        // without a code the screen stays after a save
    EXPECT_EQ(form->mode()->text(), "参照");

    press(Qt::Key_F1);
    EXPECT_EQ(form->calls.last(), "clearDisplay");
    EXPECT_TRUE(box(1)->text().isEmpty());
    EXPECT_EQ(list(0)->currentIndex(), 0);
    EXPECT_EQ(list(1)->currentIndex(), -1);
    EXPECT_EQ(focused(), box(0));

    press(Qt::Key_F2);
    EXPECT_EQ(form->calls.last(), "deleteRec");
    for (int i = 0; i < 5; ++i) press(Qt::Key_Return);
    ASSERT_EQ(focused(), form->RecField());
    form->calls.clear();
    press(Qt::Key_Return);                    // RecField: save, then clear
    EXPECT_EQ(form->calls, QStringList({"Register:VIEW", "clearDisplay"}));
    EXPECT_EQ(focused(), box(0));

    press(Qt::Key_Escape);
    flushDeletes();
    EXPECT_FALSE(form->isVisible());
}

TEST(Bureaucrat, ListsFilledFromStatements)
{
    TempCompany company;
    ASSERT_TRUE(company.open());
    execSql(session().MasterDb, "INSERT INTO Cku (Code, Namae, Ryaku) VALUES (3, '東地区', '東'), (1, NULL, '西')");
    ProbeForm form;
    QComboBox* list = form.cbox()[1];
    form.bureaucrat().makeCBox("SELECT Code, Namae FROM Cku ORDER BY Code", 1);
    ASSERT_EQ(list->count(), 2);
    EXPECT_EQ(list->currentIndex(), -1);
    EXPECT_EQ(list->itemText(0), "");
    EXPECT_EQ(list->itemData(1).toInt(), 3);
    form.bureaucrat().makeCBoxRyaku("SELECT Code, Ryaku FROM Cku ORDER BY Code", 1);
    EXPECT_EQ(list->itemText(1), "東");
    form.bureaucrat().makeCBox("SELECT nonsense", 1);
    EXPECT_EQ(list->count(), 0);
    form.bureaucrat().makeCBox("SELECT Code, Namae FROM Cku", 7);   // no such list: nothing happens
}

TEST(Bureaucrat, TagsItCannotReadLeaveTheOrder)
{
    struct BadTags : EntryForm {
        BadTags() { buildForm("bad", {{"a", "00_S10", ""}, {"b", "51_S10", ""}, {"c", "02_X", ""}, {"d", "03_N#0", ""}}, false, false); }
    } form;
    ASSERT_TRUE(showActive(&form));
    EXPECT_FALSE(form.bureaucrat().Items[1].Active);
    press(Qt::Key_Return);
    EXPECT_EQ(focused(), form.ebox()[3]);
    EXPECT_EQ(form.ebox()[3]->maxLength(), 2);
}

}  // namespace
