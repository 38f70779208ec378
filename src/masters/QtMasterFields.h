#pragma once
// What the master forms share on top of the entry form: reading and showing every declared
// field by its column, and the labels beside fields.
#include <functional>
#include <optional>
#include <QList>
#include <QString>
#include <QStringList>
#include <QVariant>
#include "masters/MasterRows.h"

class EntryForm;
class QLabel;
class QWidget;

// The box or list of a declared field.
QWidget* FieldWidget(const EntryForm& form, int field);
// The field takes part in the keyboard order (not taken out by setVisibleFalse).
bool FieldActive(EntryForm& form, int field);

// The active fields with a column of `table`, except `skip`: a list gives its code (0 when
// nothing is chosen), a box its text converted for the column. False when a number does not
// fit its column: the clerk is told which field, and it gets the focus.
bool ReadFields(EntryForm& form, const QString& table, ColumnValues& out, const QStringList& skip = {});
// Fills the active fields from a row: lists by code, numbers in the field's picture (a
// number held in a text box as "##"), texts as stored.
void ShowFields(EntryForm& form, const QString& table, const std::function<QVariant(const QString&)>& value,
                const QStringList& skip = {});
// A narrow form grows so that the longest help line (that of a list) fits on its line.
void FitHelpLine(EntryForm& form);
// Empties the fields from `fromField` on as the controller's clear does, without moving the
// focus: the field being typed in keeps it.
void ClearFieldsFrom(EntryForm& form, int fromField);
// The label right of a field, made by declaring a note for it.
QLabel* SideLabel(const EntryForm& form, int field);
// Lays the rows of `fields` out again in the given order, on the rows they hold now (all in
// one pane): a field can stand where the keyboard reaches it whatever its place among the
// declared lists.
void PlaceRows(const EntryForm& form, const QList<int>& fields);
// Hides the caption and the side label of a field the form has taken out of the order.
void HideFieldRow(const EntryForm& form, int field);

// The lookup list on `table`; the chosen code, or nothing. The keyboard comes back to `form`.
std::optional<QString> LookUp(QWidget* form, const QString& table, const QString& filter1 = {},
                              const QString& filter2 = {});
