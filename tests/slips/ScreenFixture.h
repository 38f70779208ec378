#pragma once
// The two slip screens driven offscreen as a clerk drives them, on the deposit company.
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QTest>
#include "entry/FormDriver.h"
#include "slips/CashFixture.h"
#include "slips/QtSlipScreens.h"

// What a box, a label or a list shows.
inline QString text(QWidget* w)
{
    if (auto* b = qobject_cast<QLineEdit*>(w)) return b->text().trimmed();
    if (auto* l = qobject_cast<QLabel*>(w)) return l->text().trimmed();
    if (auto* c = qobject_cast<QComboBox*>(w)) return c->currentText();
    return {};
}

template <class Form>
class ScreenTest : public CashTest {
protected:
    QPointer<Form> form;
    QStringList plain;           // "title|text" of each plain message box
    QList<bool> plainAnswers;    // taken in order; OK when the script runs out

    void SetUp() override
    {
        CashTest::SetUp();
        session().EigNamae = "本社";
        session().SlipCaller = "Menu";
        SlipScreens::setLookup([](const SlipLookup&) { return QString(); });
        SlipScreens::setPlainQuestion([this](const QString& title, const QString& t) {
            plain << title + "|" + t;
            return plainAnswers.isEmpty() ? true : plainAnswers.takeFirst();
        });
    }
    void TearDown() override
    {
        if (form) form->close();
        flushDeletes();
    }
    void open(const char* kind)
    {
        session().MenuKey = kind;
        form = new Form;
        ASSERT_TRUE(showActive(form));
        ASSERT_EQ(focused(), form->box(Form::DnoBox));
    }
};
