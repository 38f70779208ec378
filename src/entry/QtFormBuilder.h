#pragma once
// Entry forms declare their fields once, as data; this lays them out the same way on every
// form: the title and the mode caption on top, a caption and a box per field, the buttons
// and the help line at the foot.
#include <QList>
#include <QString>
#include <QStringList>

class QComboBox;
class QFont;
class QLabel;
class QLineEdit;
class QPushButton;
class QWidget;

struct FieldDecl {
    QString caption;
    // "03_S20" makes a text box with that Tag; "05" or "05*" makes a choice list whose first
    // entry, as designed, is that text (its item number, "*" for a list that is never empty).
    QString tag;
    QString column{};    // the store column the form puts there
    QString note{};      // a hint right of the field
    int pane = 0;        // 0 left, 1 right, for forms with many fields
    int width = 0;       // width in half-width characters; 0 from the tag (lists: 20)
};

struct BuiltForm {
    QLabel* title = nullptr;
    QLabel* mode = nullptr;
    QLabel* message = nullptr;
    QWidget* recField = nullptr;
    QList<QLineEdit*> ebox;         // in declaration order of the text boxes
    QList<QComboBox*> cbox;         // in declaration order of the lists
    QList<QLabel*> captions;        // one per field, in declaration order
    QList<QWidget*> fieldWidgets;   // the box or list of each field, in declaration order
    QList<QPushButton*> commands;
};

bool isListDecl(const FieldDecl& d);
// The system's screen font; the shell scales every form by ScreenScale when it first shows.
QFont screenFont(double points = 11.0);
// Lays `fields` out on `form` (which must have no layout yet). Buttons take no focus: the
// keyboard alone moves through the fields.
BuiltForm buildEntryForm(QWidget* form, const QString& title, const QList<FieldDecl>& fields,
                         const QStringList& commands);
// The buttons of every entry form.
QStringList standardCommands(bool withList);
