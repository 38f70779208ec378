#pragma once
// The main menu: seven groups on the left, the items of the selected group on the right,
// driven from the keyboard. The walk itself lives in MenuModel.
#include <QWidget>
#include "shell/MenuModel.h"

class QLabel;
class QPushButton;
class QToolButton;
struct StartupResult;

class main_menu_frm : public QWidget {
public:
    main_menu_frm();
    ~main_menu_frm() override;
    // The menu of the run, or nullptr before it exists.
    static main_menu_frm* instance();

    MenuModel& model() { return model_; }
    // Title and office visibility from the start-up, then the year, the office and the buttons.
    void applyStartup(const StartupResult& r);
    // The year and office fields from the session (after a year or office change).
    void refreshHeader();
    // Captions and highlight from the model.
    void redraw();

    QPushButton* leftButton(int i) const { return left_[i]; }
    QPushButton* rightButton(int i) const { return right_[i]; }

protected:
    void keyPressEvent(QKeyEvent* e) override;
    void mousePressEvent(QMouseEvent* e) override;
    void closeEvent(QCloseEvent* e) override;
    bool eventFilter(QObject* o, QEvent* e) override;

private:
    void act(const MenuModel::Command& c);
    static void setSelected(QPushButton* b, bool on);

    MenuModel model_;
    QLabel* title_;
    QLabel* nendoLabel_;
    QLabel* nendo_;
    QLabel* eigLabel_;
    QLabel* eig_;
    QLabel* message_;
    QToolButton* image_;
    QPushButton* left_[MenuModel::ShownGroups];
    QPushButton* right_[MenuModel::Rows];
    bool showOffice_ = false;
    bool ending_ = false;
};
