#pragma once
// The base of the entry forms: builds the form from its declared fields, owns its
// mBureaucrat and passes it the focus and key events of every field, in the order the
// controller expects (the form's own key handling first, the leave check after the cut).
#include <QWidget>
#include "entry/QtBureaucrat.h"
#include "entry/QtFormBuilder.h"

class QPushButton;

class EntryForm : public QWidget, public BureaucratForm {
    Q_OBJECT
public:
    explicit EntryForm(QWidget* parent = nullptr);

    QList<QLineEdit*> ebox() const override { return built_.ebox; }
    QList<QComboBox*> cbox() const override { return built_.cbox; }
    QLabel* mode() const override { return built_.mode; }
    QLabel* message() const override { return built_.message; }
    QWidget* RecField() const override { return built_.recField; }
    void Register(const QString&) override {}
    bool deleteRec() override { return false; }
    void Unload() override;

    QLabel* title() const { return built_.title; }
    QPushButton* Command(int i) const;
    const QList<FieldDecl>& fields() const { return fields_; }
    QLabel* caption(int field) const;
    mBureaucrat& bureaucrat() { return bu_; }

protected:
    // Lays the form out and loads the controller with one item per field.
    void buildForm(const QString& title, const QList<FieldDecl>& fields, bool autoCode, bool withListButton);
    // The form's own keys, before the controller; it may change keyCode (0 ends the event).
    virtual void formKeyDown(bool list, int index, int& keyCode, int shift) {}
    // The box was left, its text already cut to its length.
    virtual void eboxLeft(int index) {}
    // Enter saves and clears, Up goes back to the last field.
    virtual void recFieldKeyDown(int& keyCode, int shift);
    virtual void commandClick(int index);
    const QList<QPushButton*>& commandButtons() const { return built_.commands; }

    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;

    mBureaucrat bu_;

private:
    bool keyPress(QObject* watched, class QKeyEvent* e);

    BuiltForm built_;
    QList<FieldDecl> fields_;
    bool shown_ = false;
};
