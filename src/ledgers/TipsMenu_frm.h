#pragma once
// "データ復旧メニュー": months of the ledgers rebuilt from the slips for the session's office,
// master names carried into the ledger heads, and "~" for the null repair.
#include <QList>
#include <QWidget>

class QLabel;
class QLineEdit;
class QPushButton;

class TipsMenu_frm : public QWidget {
    Q_OBJECT
public:
    TipsMenu_frm();
    ~TipsMenu_frm() override;
    QLineEdit* Text1() const { return text1_; }
    QLineEdit* Text2() const { return text2_; }
    QLabel* Information() const { return info_; }
    QPushButton* Command1(int index) const { return buttons_.value(index); }

    // Runs what button `index` stands for (0..7).
    void runButton(int index);
    // After the year-end update: both boxes to the first month, which is rebuilt in all three
    // ledgers. False when the rebuild failed (the error has been told).
    Q_INVOKABLE bool AfterNenjiKosin();

protected:
    bool eventFilter(QObject* o, QEvent* e) override;
    void keyPressEvent(QKeyEvent* e) override;

private:
    QLineEdit* text1_;
    QLineEdit* text2_;
    QLabel* info_;
    QList<QPushButton*> buttons_;
    bool cursorSet_ = false;

    bool text1Key(int key);
    bool text2Key(int key);
    bool buttonKey(int index, int key);
    void rebuild(int index);
    void masterNames(int index);
    void repairNulls();
    void setInformation(const QString& text);
    void busy(bool on);
};
