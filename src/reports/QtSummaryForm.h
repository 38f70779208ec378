#pragma once
// The frame the summary screens share: a title, rows of fields worked from the keyboard, the
// command button, the grid and the help line. Enter and Down go on, Up goes back, Enter on
// the last field runs the command; F1 clears, F6 looks up, F9 prints, F10 exports, Esc closes.
// PageUp and PageDown in a field scroll the grid, which never takes the focus itself.
#include <memory>
#include <optional>
#include <QDate>
#include <QList>
#include <QWidget>

class QComboBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableWidget;
class QVBoxLayout;
class QtGridCells;
struct SummaryGrid;

class SummaryForm : public QWidget {
    Q_OBJECT
public:
    QLabel* Title() const { return title_; }
    QLabel* message() const { return message_; }
    QPushButton* Command() const { return command_; }
    QTableWidget* List() const { return list_; }
    QList<QLineEdit*> ebox() const { return ebox_; }

protected:
    explicit SummaryForm(const QString& title);
    ~SummaryForm() override;

    // Layout: a new row of fields, boxes and labels on it, then the foot.
    QHBoxLayout* newRow();
    QLineEdit* addBox(QHBoxLayout* row, int maxLength);
    QLabel* addLabel(QHBoxLayout* row, const QString& text, int minChars = 0);
    // Year, month and day boxes with their captions and the weekday after them; leaving the
    // day box shows the weekday.
    void addDateBoxes(QHBoxLayout* row, const QStringList& captions, QLabel** weekday);
    // The date of the n-th group of date boxes (from 0), and every group set to one date.
    QDate dateOf(int group) const;
    void setDates(const QDate& date);
    QComboBox* addList(QHBoxLayout* row, const QStringList& entries);
    void finish(const QString& command, const QStringList& messageLines);

    // The keyboard order; built from the boxes and the list as they were added.
    QList<QWidget*> fields() const { return order_; }
    void focusField(int index);

    // What the form does for its keys and command.
    virtual void runCommand() = 0;
    virtual void clearForm() = 0;
    virtual void printReport() = 0;
    virtual void exportSheet() = 0;
    // F6 in a field: the code taken, which then counts as typed and entered.
    virtual std::optional<QString> lookup(QLineEdit* box) { return std::nullopt; }
    // A box was left (its name or weekday is shown here).
    virtual void boxLeft(QLineEdit* box) {}

    // The grid as the grid print sees it (row 0 the heads).
    QtGridCells& cells() const { return *cells_; }
    // The grid from the cells of a report.
    void showGrid(const SummaryGrid& grid);
    // Widens the grid to show all its columns where the display allows it.
    void fitGrid();

    bool eventFilter(QObject* watched, QEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    struct DateGroup {
        int year = 0;   // index of the year box; month and day follow
        QLabel* weekday = nullptr;
    };
    bool fieldKey(int index, class QKeyEvent* e);
    void next(int index);
    void leave(QLineEdit* box);

    QList<DateGroup> dates_;
    QVBoxLayout* body_ = nullptr;
    QLabel* title_ = nullptr;
    QLabel* message_ = nullptr;
    QPushButton* command_ = nullptr;
    QTableWidget* list_ = nullptr;
    std::unique_ptr<QtGridCells> cells_;
    QList<QLineEdit*> ebox_;
    QList<QWidget*> order_;
    bool shown_ = false;
};
