#include "reports/QtSummaryForm.h"
#include <QComboBox>
#include <QFocusEvent>
#include <QFontMetrics>
#include <QFrame>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTableWidget>
#include <QVBoxLayout>
#include "entry/Dates.h"
#include "entry/QtFormBuilder.h"
#include "pageout/QtGrd.h"
#include "reports/SummaryGrid.h"

SummaryForm::SummaryForm(const QString& title)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setFont(screenFont());
    setWindowTitle(title);
    body_ = new QVBoxLayout(this);
    body_->setContentsMargins(16, 12, 16, 12);
    body_->setSpacing(8);
    title_ = new QLabel(title, this);
    title_->setObjectName(QStringLiteral("Title"));
    title_->setFont(screenFont(16));
    body_->addWidget(title_);
    auto* rule = new QFrame(this);
    rule->setFrameShape(QFrame::HLine);
    rule->setFrameShadow(QFrame::Sunken);
    body_->addWidget(rule);
}

SummaryForm::~SummaryForm() = default;

QHBoxLayout* SummaryForm::newRow()
{
    auto* row = new QHBoxLayout;
    row->setSpacing(6);
    body_->addLayout(row);
    return row;
}

QLineEdit* SummaryForm::addBox(QHBoxLayout* row, int maxLength)
{
    auto* box = new QLineEdit(this);
    box->setObjectName(QStringLiteral("ebox_%1").arg(ebox_.size()));
    box->setMaxLength(maxLength);
    box->setAlignment(Qt::AlignRight);
    box->setFixedWidth(QFontMetrics(font()).horizontalAdvance(QLatin1Char('0')) * (maxLength + 2) + 10);
    box->installEventFilter(this);
    row->addWidget(box);
    ebox_ << box;
    order_ << box;
    return box;
}

QLabel* SummaryForm::addLabel(QHBoxLayout* row, const QString& text, int minChars)
{
    auto* l = new QLabel(text, this);
    l->setTextFormat(Qt::PlainText);
    if (minChars > 0) l->setMinimumWidth(QFontMetrics(font()).horizontalAdvance(QLatin1Char('0')) * minChars);
    row->addWidget(l);
    return l;
}

void SummaryForm::addDateBoxes(QHBoxLayout* row, const QStringList& captions, QLabel** weekday)
{
    const int year = int(ebox_.size());
    addBox(row, 4);
    addLabel(row, captions.value(0));
    addBox(row, 2);
    addLabel(row, captions.value(1));
    addBox(row, 2);
    addLabel(row, captions.value(2));
    *weekday = addLabel(row, QString(), 5);
    dates_ << DateGroup{year, *weekday};
}

QDate SummaryForm::dateOf(int group) const
{
    const DateGroup& g = dates_[group];
    return BoxesToDate(ebox_[g.year]->text(), ebox_[g.year + 1]->text(), ebox_[g.year + 2]->text());
}

void SummaryForm::setDates(const QDate& date)
{
    const DateBoxes b = DateToBoxes(date);
    for (const DateGroup& g : dates_) {
        ebox_[g.year]->setText(b.year.trimmed());
        ebox_[g.year + 1]->setText(b.month.trimmed());
        ebox_[g.year + 2]->setText(b.day.trimmed());
        g.weekday->setText(b.weekday);
    }
}

void SummaryForm::leave(QLineEdit* box)
{
    const int index = int(ebox_.indexOf(box));
    for (int g = 0; g < dates_.size(); ++g)
        if (index == dates_[g].year + 2) dates_[g].weekday->setText(WeekdayText(dateOf(g)));
    boxLeft(box);
}

QComboBox* SummaryForm::addList(QHBoxLayout* row, const QStringList& entries)
{
    auto* list = new QComboBox(this);
    list->setObjectName(QStringLiteral("cbox"));
    list->addItems(entries);
    list->setCurrentIndex(0);
    list->installEventFilter(this);
    row->addWidget(list);
    order_ << list;
    return list;
}

void SummaryForm::finish(const QString& command, const QStringList& messageLines)
{
    auto* buttons = newRow();
    command_ = new QPushButton(command, this);
    command_->setObjectName(QStringLiteral("Command"));
    command_->setFocusPolicy(Qt::NoFocus);
    command_->setAutoDefault(false);
    connect(command_, &QPushButton::clicked, this, [this] { runCommand(); });
    buttons->addWidget(command_);
    buttons->addStretch(1);

    list_ = new QTableWidget(this);
    list_->setObjectName(QStringLiteral("List"));
    cells_ = std::make_unique<QtGridCells>(list_);
    list_->setFocusPolicy(Qt::NoFocus);
    list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    list_->setSelectionMode(QAbstractItemView::NoSelection);
    list_->verticalHeader()->setVisible(false);
    // Numbers come padded to their picture's width: a narrow column shows their right end.
    list_->setTextElideMode(Qt::ElideNone);
    list_->setWordWrap(false);
    list_->setMinimumSize(760, 360);
    body_->addWidget(list_, 1);

    message_ = new QLabel(messageLines.join(QLatin1Char('\n')), this);
    message_->setObjectName(QStringLiteral("message"));
    message_->setFrameShape(QFrame::Panel);
    message_->setFrameShadow(QFrame::Sunken);
    body_->addWidget(message_);
}

void SummaryForm::focusField(int index)
{
    if (index < 0 || index >= order_.size()) return;
    order_[index]->setFocus();
    if (auto* box = qobject_cast<QLineEdit*>(order_[index])) box->selectAll();
}

void SummaryForm::showGrid(const SummaryGrid& grid)
{
    list_->clear();
    list_->setRowCount(0);
    grid.toCells(*cells_);
    fitGrid();
}

void SummaryForm::fitGrid()
{
    int total = 2 * list_->frameWidth() + list_->verticalScrollBar()->sizeHint().width();
    for (int c = 0; c < list_->columnCount(); ++c) total += list_->columnWidth(c);
    list_->setMinimumWidth(qMin(total, 1220));
}

void SummaryForm::next(int index)
{
    if (index + 1 < order_.size()) {
        focusField(index + 1);
        return;
    }
    // The last field: what it holds counts before the command runs.
    if (auto* box = qobject_cast<QLineEdit*>(order_[index])) leave(box);
    runCommand();
}

bool SummaryForm::fieldKey(int index, QKeyEvent* e)
{
    const bool list = qobject_cast<QComboBox*>(order_[index]) != nullptr;
    switch (e->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Tab:
        next(index);
        return true;
    case Qt::Key_Down:
        // Only Enter runs the command from the last field.
        if (index + 1 < order_.size()) next(index);
        return true;
    case Qt::Key_Backtab:
    case Qt::Key_Up:
        focusField(index > 0 ? index - 1 : 0);
        return true;
    case Qt::Key_Escape:
        close();
        return true;
    case Qt::Key_F1:
        clearForm();
        return true;
    case Qt::Key_F6:
        if (auto* box = qobject_cast<QLineEdit*>(order_[index])) {
            if (const std::optional<QString> code = lookup(box)) {
                box->setText(*code);
                leave(box);
                next(index);
            }
        }
        return true;
    case Qt::Key_F9:
    case Qt::Key_F10:
        if (auto* box = qobject_cast<QLineEdit*>(order_[index])) leave(box);
        if (e->key() == Qt::Key_F9) printReport();
        else exportSheet();
        // The preview and the messages have no owner: the keyboard comes back to this field.
        if (isVisible()) {
            activateWindow();
            order_[index]->setFocus();
        }
        return true;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
        // The list switches its entries; a box scrolls the grid.
        if (list) return false;
        list_->verticalScrollBar()->triggerAction(e->key() == Qt::Key_PageUp ? QAbstractSlider::SliderPageStepSub
                                                                              : QAbstractSlider::SliderPageStepAdd);
        return true;
    default:
        return false;
    }
}

bool SummaryForm::eventFilter(QObject* watched, QEvent* event)
{
    const int index = order_.indexOf(qobject_cast<QWidget*>(watched));
    if (index < 0) return QWidget::eventFilter(watched, event);
    if (event->type() == QEvent::KeyPress) return fieldKey(index, static_cast<QKeyEvent*>(event));
    if (event->type() == QEvent::FocusOut) {
        // A message or the lookup taking the focus is not leaving the field.
        const Qt::FocusReason r = static_cast<QFocusEvent*>(event)->reason();
        if (auto* box = qobject_cast<QLineEdit*>(watched); box && r != Qt::ActiveWindowFocusReason && r != Qt::PopupFocusReason)
            leave(box);
    }
    return QWidget::eventFilter(watched, event);
}

void SummaryForm::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (shown_) return;
    shown_ = true;
    focusField(0);
}
