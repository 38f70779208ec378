#pragma once
// The state of the main menu: seven groups on the left, the items of the selected group on
// the right, at most 13 of them visible at a time. Keys come in as plain Qt key codes and
// come back as what the form has to do, so the walk is testable without a screen.
#include <QString>
#include <QStringList>

class MenuModel {
public:
    static constexpr int GroupSlots = 8;    // groups 0..7; only 0..6 have a button
    static constexpr int ShownGroups = 7;
    static constexpr int MaxItems = 31;
    static constexpr int Rows = 13;         // right buttons

    struct Command {
        enum Kind {
            Nothing,
            Redraw,           // highlight or captions changed
            Run,              // MenuRun(caption)
            ChangeOffice,     // Space
            Ending,           // Esc in the right column: DoEndingAction, the menu stays
            EndingThenClose,  // Esc in the left column: DoEndingAction, then the form closes
        } kind = Nothing;
        QString caption;
    };

    QString MenuItems[GroupSlots][MaxItems];
    short MenuCount[GroupSlots] = {};
    int CurGroup = 0;
    int CurItem = 0;
    int TopItem = 0;
    bool InRight = true;

    void MenuClearGroup(int group);
    // False when the group does not exist or is full; the caption is then dropped.
    bool MenuAddItem(int group, const QString& caption);
    // Captions shown in the right buttons for `group` from TopItem on (at most 13).
    QStringList MenuShowGroup(int group) const;
    QStringList visibleItems() const { return MenuShowGroup(CurGroup); }
    // The caption of the highlighted right button, empty when there is none.
    QString currentCaption() const;

    // After start-up: first group, first item, keyboard in the right column.
    void selectStart();
    Command keyPress(int qtKey);
    // Mouse: a click on left button `group`, or on right button `row`.
    Command clickLeft(int group);
    Command clickRight(int row);

private:
    int count() const { return MenuCount[CurGroup]; }
    void selectGroup(int group);
    Command upRight();
    Command downRight();
};
