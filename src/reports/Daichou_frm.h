#pragma once
// "台帳範囲": the partner and the period of a ledger view, by closing month or by dates. The
// view (Tdc, Sdc, Jdc, Hdc) is the menu's word when the form is shown; 表示 hands the range to
// the viewer ListDaichou_frm.
#include <functional>
#include <QList>
#include <QWidget>
#include "reports/Mei.h"

class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;

class Daichou_frm : public QWidget {
    Q_OBJECT
public:
    explicit Daichou_frm(QWidget* parent = nullptr);

    enum Box { StartMonth, StartDay, EndMonth, EndDay };
    QComboBox* ModeBox() const { return mode_; }
    QComboBox* cbox(int i) const { return cbox_[i]; }
    QLineEdit* eGetudo() const { return getudo_; }
    QLineEdit* dateBox(Box b) const { return dates_[b]; }
    QPushButton* DispCommand() const { return disp_; }
    QLabel* caption(int i) const { return captions_[i]; }
    const QString& view() const { return view_; }

    // The range as the fields stand; false (the message told, the focus on the field) when a
    // field is wrong.
    bool readRange(LedgerRange* range);
    void DispCommand_Click();

    // The lookup list: (table, filter1, filter2) -> the chosen code or "". The window by default.
    using Lookup = std::function<QString(const QString& table, const QString& filter1, const QString& filter2)>;
    static void setLookup(Lookup f);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void loadView(const QString& view);
    void modeChanged();
    void fillPartners();
    void fillDestinations();
    QList<QWidget*> order() const;
    void move(QWidget* from, int step);
    bool checkBox(QLineEdit* box);
    void lookup(int index);
    bool listKey(int index, int key, Qt::KeyboardModifiers mods);

    QString view_;
    bool customer_ = true;
    QLabel* title_ = nullptr;
    QComboBox* mode_ = nullptr;
    QComboBox* cbox_[3] = {};
    QLabel* captions_[3] = {};
    QLineEdit* getudo_ = nullptr;
    QLineEdit* dates_[4] = {};
    QWidget* monthRow_ = nullptr;
    QWidget* dateRow_ = nullptr;
    QPushButton* disp_ = nullptr;
    QString typed_;
};
