#pragma once
// "入金伝票処理" / "支払伝票処理": the deposit and payment screen. The head runs under
// mBureaucrat, six money rows below it, and beside them the partner's twelve months with the
// balance. Every rule lives in CashSlipEditor and CashRegister; this form copies its widgets
// to the editor, calls it, and shows what it left.
#include <functional>
#include <QHash>
#include <QWidget>
#include "entry/QtBureaucrat.h"
#include "slips/CashSlipEditor.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

class Cashier_frm : public QWidget, public BureaucratForm {
    Q_OBJECT
public:
    // The grid's columns, in the order of a row.
    enum GridField { dKubun, dNaiyou, dGaku, GridFieldCount };
    // Head boxes (ebox) and lists (cbox), in the controller's order.
    enum Box { DnoBox, YearBox, MonthBox, DayBox, NNoBox };
    enum List { ClassList, PartnerList, NouList, TanList };
    enum Command { ClearCmd, DeleteCmd, ListCmd, SaveCmd, CloseCmd, CommandCount };

    // The kind ("Dny"/"Dsh") comes from the session's MenuKey at load.
    explicit Cashier_frm(QWidget* parent = nullptr);
    ~Cashier_frm() override;

    // Opens the screen on a saved slip of `kind` ("Dny" or "Dsh") as if its number had been
    // typed and Enter pressed; a number without rows opens a new slip under it. The caller
    // sets session().SlipCaller first: closing the screen goes back there. nullptr for
    // another kind.
    static Cashier_frm* openSlip(const QString& kind, long dno);
    // The number typed into the number field and Enter, on the screen as it stands.
    void showNumber(long dno);
    // Another kind on this screen: captions, lists and everything shown start afresh.
    void setKind(const QString& kind);

    QList<QLineEdit*> ebox() const override { return ebox_; }
    QList<QComboBox*> cbox() const override { return cbox_; }
    QLabel* mode() const override { return mode_; }
    QLabel* message() const override { return message_; }
    QWidget* RecField() const override { return nullptr; }
    void Register(const QString& mode) override;
    // Deleting runs through F2 and the button only.
    bool deleteRec() override { return false; }
    void clearDisplay() override;
    void Unload() override;

    // The one place where function keys are acted on, whichever field has the focus.
    void doFunctionKey(int keyCode);

    CashSlipEditor& editor() { return ed_; }
    mBureaucrat& bureaucrat() { return bu_; }
    QLineEdit* box(Box b) const { return ebox_[b]; }
    QComboBox* list(List l) const { return cbox_[l]; }
    QWidget* cell(GridField f, int row) const { return cells_[row][f]; }
    QLabel* Gakukei() const { return gakukei_; }
    QLineEdit* dKurikoshi() const { return kurikoshi_; }
    QLabel* dZandaka() const { return zandaka_; }
    QLabel* monthCaption(int line) const { return months_[line]; }
    QLabel* Refers(int line) const { return refers_[line]; }
    QLabel* Results(int line) const { return results_[line]; }
    QLabel* weekdayLabel() const { return weekday_; }
    QLabel* titleLabel() const { return title_; }
    QLabel* dateCaption() const { return dateCaption_; }
    QLabel* nouCaption() const { return nouCaption_; }
    QPushButton* command(Command c) const { return commands_[c]; }

    // Lookups and plain message boxes go through SlipScreens (QtSlipScreens.h).
    // The list of a partner's deposit or payment slips; answers a number as text or "".
    using CashListPicker = std::function<QString(const QString& kind, qint64 partner)>;
    static void setCashListPicker(CashListPicker f);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool event(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    // Layout (QtCashierLayout.cpp).
    void build();
    QWidget* buildHead();
    QWidget* buildGrid();
    QWidget* buildPanel();
    QWidget* buildFoot();
    void showKindCaptions();

    // Widgets <-> editor.
    void pushHead();
    void pushRows();
    void pushAll() { pushHead(); pushRows(); }
    void pullLists();
    void pullHead();
    void pullRows();
    void pullPanel();
    void pullAll();

    bool keyPress(QObject* watched, class QKeyEvent* e);
    bool headKey(bool isList, int index, int keyCode, int shift);
    void numberEnter(int& keyCode);
    void listLeft(int index);
    void listForward(int index, int keyCode, int shift);
    void focusNumber();
    void focusFor(SlipFocus f);
    void saveSlip();
    void deleteSlip();
    void lookupInList(int index);
    void pickCashSlipFromList();
    void carryOverEnter();

    // The grid (QtCashierGrid.cpp).
    bool gridKey(GridField f, int row, int keyCode);
    void gridLeft(GridField f, int row);
    void focusCell(GridField f, int row);
    void rowDelete(int row);
    void rowInsert(int row);

    CashSlipEditor ed_;
    mBureaucrat bu_;
    QList<QLineEdit*> ebox_;
    QList<QComboBox*> cbox_;
    QLabel *title_ = nullptr, *office_ = nullptr, *mode_ = nullptr, *message_ = nullptr;
    QLabel *weekday_ = nullptr, *dateCaption_ = nullptr, *classCaption_ = nullptr, *partnerCaption_ = nullptr;
    QLabel *nouCaption_ = nullptr, *refersHead_ = nullptr, *resultsHead_ = nullptr;
    QWidget* cells_[CashSlipEditor::RowCount][GridFieldCount] = {};
    QLabel* gakukei_ = nullptr;
    QLineEdit* kurikoshi_ = nullptr;
    QLabel* zandaka_ = nullptr;
    QLabel* months_[CashPanel::MonthCount] = {};
    QLabel* refers_[CashPanel::MonthCount] = {};
    QLabel* results_[CashPanel::MonthCount] = {};
    QPushButton* commands_[CommandCount] = {};
    QHash<QObject*, std::pair<GridField, int>> gridOf_;
    QList<ListEntry> shown_[4];
    bool pulling_ = false;
    bool leaving_ = false;     // a list is being left by its own key; its focus-out adds nothing
    bool shownOnce_ = false;
};
