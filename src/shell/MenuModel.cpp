#include "shell/MenuModel.h"
#include <Qt>

void MenuModel::MenuClearGroup(int group)
{
    if (group < 0 || group >= GroupSlots) return;
    for (QString& s : MenuItems[group]) s.clear();
    MenuCount[group] = 0;
}

bool MenuModel::MenuAddItem(int group, const QString& caption)
{
    if (group < 0 || group >= GroupSlots || MenuCount[group] >= MaxItems) return false;
    MenuItems[group][MenuCount[group]++] = caption;
    return true;
}

QStringList MenuModel::MenuShowGroup(int group) const
{
    QStringList out;
    if (group < 0 || group >= GroupSlots) return out;
    const int n = MenuCount[group];
    for (int i = TopItem; i < n && out.size() < Rows; ++i) out << MenuItems[group][i];
    return out;
}

QString MenuModel::currentCaption() const
{
    const int i = TopItem + CurItem;
    if (i < 0 || i >= count()) return {};
    return MenuItems[CurGroup][i];
}

void MenuModel::selectStart()
{
    CurGroup = 0;
    CurItem = 0;
    TopItem = 0;
    InRight = true;
}

void MenuModel::selectGroup(int group)
{
    CurGroup = group;
    CurItem = 0;
    TopItem = 0;
}

MenuModel::Command MenuModel::upRight()
{
    const int n = count();
    if (n == 0) return {};
    if (n <= Rows) {
        CurItem = CurItem == 0 ? n - 1 : CurItem - 1;
    } else if (CurItem == 0 && TopItem == 0) {
        TopItem = n - Rows;
        CurItem = Rows - 1;
    } else if (CurItem == 0) {
        --TopItem;
    } else {
        --CurItem;
    }
    return {Command::Redraw, {}};
}

MenuModel::Command MenuModel::downRight()
{
    const int n = count();
    if (n == 0) return {};
    if (n <= Rows) {
        CurItem = CurItem >= n - 1 ? 0 : CurItem + 1;
    } else if (CurItem == Rows - 1 && TopItem >= n - Rows) {
        TopItem = 0;
        CurItem = 0;
    } else if (CurItem == Rows - 1) {
        ++TopItem;
    } else {
        ++CurItem;
    }
    return {Command::Redraw, {}};
}

MenuModel::Command MenuModel::keyPress(int key)
{
    switch (key) {
    case Qt::Key_Space:
        return {Command::ChangeOffice, {}};
    case Qt::Key_Escape:
        // In the left column the form closes even when the exit question is answered "no".
        return {InRight ? Command::Ending : Command::EndingThenClose, {}};
    case Qt::Key_Right:
        if (InRight) return {};
        InRight = true;
        return {Command::Redraw, {}};
    case Qt::Key_Left:
        if (!InRight) return {};
        InRight = false;
        CurItem = 0;
        TopItem = 0;
        return {Command::Redraw, {}};
    case Qt::Key_Up:
        if (InRight) return upRight();
        selectGroup(CurGroup == 0 ? ShownGroups - 1 : CurGroup - 1);
        return {Command::Redraw, {}};
    case Qt::Key_Down:
        if (InRight) return downRight();
        selectGroup(CurGroup >= ShownGroups - 1 ? 0 : CurGroup + 1);
        return {Command::Redraw, {}};
    case Qt::Key_Return:
    case Qt::Key_Enter: {
        if (!InRight) return {};
        const QString c = currentCaption();
        if (c.isEmpty()) return {};
        return {Command::Run, c};
    }
    default:
        return {};
    }
}

MenuModel::Command MenuModel::clickLeft(int group)
{
    if (group < 0 || group >= ShownGroups) return {};
    selectGroup(group);
    InRight = false;
    return {Command::Redraw, {}};
}

MenuModel::Command MenuModel::clickRight(int row)
{
    if (row < 0 || row >= Rows || TopItem + row >= count()) return {};
    InRight = true;
    CurItem = row;
    return {Command::Run, currentCaption()};
}
