#pragma once
// mBureaucrat: the one keyboard controller of entry forms. It moves through the fields in
// their declared order, looks a record up when the code field is left, and turns F1, F2,
// F10 and Esc into the form's clear, delete, save and close. It never touches a column:
// the form does that in Register, deleteRec, clearDisplay and Display.
#include <QList>
#include <QString>

class QComboBox;
class QLabel;
class QLineEdit;
class QWidget;
class Recordset;

// What a form gives its controller.
class BureaucratForm {
public:
    virtual ~BureaucratForm() = default;
    virtual QList<QLineEdit*> ebox() const = 0;
    virtual QList<QComboBox*> cbox() const = 0;
    virtual QLabel* mode() const = 0;
    virtual QLabel* message() const = 0;
    virtual QWidget* RecField() const = 0;
    // The form's table ordered by Code; only forms that let the controller look codes up.
    virtual Recordset* myrs() { return nullptr; }
    virtual void Register(const QString& mode) = 0;
    virtual bool deleteRec() = 0;
    virtual void clearDisplay() {}
    virtual void Display() {}
    // Closes the form.
    virtual void Unload() = 0;
};

struct EntryItem {
    bool Active = false;
    QString Kind;        // "S" text, "N" number, "C" choice list
    int Length = 0;      // "S": bytes
    QString Format;      // "N": number picture
    int Index = 0;       // of the box in ebox or cbox
    bool Star = false;   // "C": empty means the first entry, not no entry
};

class mBureaucrat {
public:
    static constexpr int MaxItems = 51;

    BureaucratForm* Form = nullptr;
    EntryItem Items[MaxItems];
    int CurItem = 0;
    int ItemCount = 0;
    int EboxCount = 0;
    int CboxCount = 0;
    QString State = QStringLiteral("VIEW");
    qint64 CurCode = 0;
    bool AutoCode = false;
    QString Typed;

    // "CLEAR", "CLOSE", "REGISTER" or "DELETE".
    void Action(const QString& command);
    void cboxGotFocus(int index);
    void clearDisplay();
    void formLoad(int itemCount, int eboxCount, int cboxCount, bool autoCode);
    void eboxKeyDown(int index, int& keyCode, int shift);
    // Fill cbox(index) from a statement of the form's own text: Namae (Ryaku) with Code.
    void makeCBox(const QString& sql, int index);
    void makeCBoxRyaku(const QString& sql, int index);
    void MakeCBoxNou(const QString& sql, int index);
    void cboxKeyDown(int index, int& keyCode, int shift);
    void eboxGotFocus(int index);
    void moveLastItem();
    // "E" a text box, anything else a choice list: out of the keyboard order, and hidden.
    void setVisibleFalse(const QString& kind, int index);
    void DecideEBoxLength(QLineEdit* box);

    // The item that holds box `index` of that kind ("S"/"N" boxes or "C" lists); -1 for none.
    int itemOf(bool list, int index) const;
    // Gives the focus to the item's control.
    void focusItem(int item);

private:
    qint64 NextCode();
    bool NextItem();
    void PrevItem();
    QString CutToLength(QLineEdit* box);
    void fillList(const QString& sql, int index, const QString& textField);
    void normalise(int item);
    void setMode(const QString& caption);
    void setMessage(const QString& text);
};

// The number of a code box, digits only; "" is 0.
qint64 CodeNumber(const QString& text);
