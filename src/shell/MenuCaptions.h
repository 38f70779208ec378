#pragma once
// The captions the menu knows, in the dispatcher's order, with the group a new company puts
// them in. `offer`: ledger processing is offered before the screen opens.
#include <QList>
#include <QPair>
#include <QString>

struct MenuCaption {
    int group;
    QString caption;
    bool offer;
    QString menuKey;
    QString form;     // the screen it starts, or a word for the built-in prompts
};

const QList<MenuCaption>& menuCaptions();
const MenuCaption* findMenuCaption(const QString& caption);
// The seven left captions, group 0..6.
const QStringList& menuGroupCaptions();
// The menu of a new company: group and caption of each entry above, in order.
QList<QPair<int, QString>> standardMenuRows();
