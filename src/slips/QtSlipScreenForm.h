#pragma once
// What the slip screen and the deposit screen do alike around their own rows: the head boxes
// and lists under mBureaucrat, Enter in the number field, the two mode captions, a list left
// by its key or by a pick of the lookup, the title row and the buttons, and the way back when
// the screen closes. Each screen keeps its own keys, rows and saving.
#include <QWidget>
#include "entry/QtBureaucrat.h"
#include "slips/SlipHeadEditor.h"

class QComboBox;
class QHBoxLayout;
class QKeyEvent;
class QLabel;
class QLineEdit;
class QPushButton;
class QVBoxLayout;

class SlipScreenForm : public QWidget, public BureaucratForm {
    Q_OBJECT
public:
    // Head items both screens have, by their index in ebox and cbox.
    static constexpr int NumberBox = 0, YearItem = 1, DayBox = 3;
    static constexpr int ClassItem = 0, PartnerItem = 1, NouItem = 2;

    QList<QLineEdit*> ebox() const override { return ebox_; }
    QList<QComboBox*> cbox() const override { return cbox_; }
    QLabel* mode() const override { return mode_; }
    QLabel* message() const override { return message_; }
    QWidget* RecField() const override { return nullptr; }
    // Deleting runs through F2 and the button only.
    bool deleteRec() override { return false; }
    void Unload() override { close(); }

    // The one place where function keys are acted on, whichever field has the focus.
    virtual void doFunctionKey(int keyCode) = 0;

    mBureaucrat& bureaucrat() { return bu_; }
    QLabel* weekdayLabel() const { return weekday_; }

protected:
    // `tanList`: the staff list's index in cbox.
    SlipScreenForm(QWidget* parent, int tanList);

    virtual SlipHeadEditor& headEditor() = 0;
    virtual void pushHead() = 0;
    virtual void pullAll() = 0;
    // What leaving list `index` does; false when it sent the focus elsewhere.
    virtual bool listLeft(int index) = 0;
    virtual void focusFirstRow() = 0;
    // A head key of the screen's own; true when it is fully handled.
    virtual bool ownHeadKey(bool isList, int index, int key, int shift, bool forward) = 0;

    // The frame: margins, and the title, office and mode over everything else.
    QVBoxLayout* buildFrame();
    // The head's boxes with their tags and widths (in half-width characters), its lists, and
    // the date row; the date row is returned.
    QHBoxLayout* buildHeadFields(QWidget* w, const QList<const char*>& tags, const QList<int>& widths,
                                 const QList<int>& listWidths);
    // A row of buttons that never take the focus, and the message line under them.
    void addButtons(QVBoxLayout* v, QWidget* w, const QStringList& names, QPushButton** commands);
    int halfWidth() const;

    // The head fields both screens have, from their widgets to the editor and back.
    void pushPartnerHead();
    void pullPartnerHead();
    // The lists' entries, where the editor changed them; after forgetShownLists, all of them.
    void pullLists();
    void forgetShownLists();

    // Enter in the number field: a new slip, or the stored one shown with the focus kept.
    void numberEnter(int& keyCode);
    // The number as if typed and Enter pressed.
    void typeNumber(const QString& number);
    void focusNumber();
    void focusFor(SlipFocus f);
    // F6 in the class or partner list: a pick acts as Enter on the list.
    void lookupInList(int index);
    // Leaves the list as its key does, moving on unless leaving sent the focus elsewhere.
    void leaveList(int index, int keyCode, int shift);
    // Enter on a list: a code typed on the keypad chooses first. True when the partner list
    // has nothing chosen: the machine beeps and the focus stays.
    bool partnerMissing(int index, int key);

    // A focus-out by the clerk, not by a message or a list's popup taking the focus.
    static bool leftByTheClerk(QEvent* event);
    // The head boxes and lists: the mode caption, leaving them, and their keys.
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool headKey(bool isList, int index, int key, int shift);
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

    mBureaucrat bu_;
    QList<QLineEdit*> ebox_;
    QList<QComboBox*> cbox_;
    QLabel *title_ = nullptr, *office_ = nullptr, *mode_ = nullptr, *message_ = nullptr, *weekday_ = nullptr;
    bool pulling_ = false;
    bool leaving_ = false;     // a list is being left by its key or a pick; its focus-out adds nothing

private:
    int tanList_;
    QList<ListEntry> shown_[4];   // class, partner, destination, staff
    bool shownOnce_ = false;
};
