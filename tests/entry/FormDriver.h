#pragma once
// Drives a form offscreen the way a clerk does: keys go to whatever has the focus.
#include <QApplication>
#include <QFont>
#include <QLineEdit>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTest>
#include <QWidget>

inline void useJapaneseFonts()
{
    QFont::insertSubstitution(QStringLiteral("ＭＳ ゴシック"), QStringLiteral("IPAexGothic"));
    QFont::insertSubstitution(QStringLiteral("ＭＳ 明朝"), QStringLiteral("IPAexMincho"));
}

inline bool showActive(QWidget* w)
{
    useJapaneseFonts();
    w->show();
    w->activateWindow();
    return QTest::qWaitForWindowActive(w);
}

inline QWidget* focused() { return QApplication::focusWidget(); }

inline void press(Qt::Key key, Qt::KeyboardModifiers mods = Qt::NoModifier)
{
    QWidget* w = QApplication::focusWidget();
    if (w) QTest::keyClick(w, key, mods);
}

// What the input method would hand over: the text of the field that has the focus.
inline void typeText(const QString& text)
{
    if (auto* box = qobject_cast<QLineEdit*>(QApplication::focusWidget())) box->setText(text);
}

// Types into the focused box and leaves it with Enter.
inline void enter(const QString& text)
{
    typeText(text);
    press(Qt::Key_Return);
}

// Picks the entry of that code in the focused list with the keypad, and goes on.
inline void pick(int code)
{
    for (QChar c : QString::number(code)) press(Qt::Key(Qt::Key_0 + c.digitValue()), Qt::KeypadModifier);
    press(Qt::Key_Return);
}

// Lets forms closed with WA_DeleteOnClose go.
inline void flushDeletes() { QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); }

// A second station: its own connection to the same master file.
class OtherStation {
public:
    explicit OtherStation(const QString& file) : name_(QStringLiteral("other-station"))
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name_);
        db.setDatabaseName(file);
        db.open();
    }
    ~OtherStation() { QSqlDatabase::database(name_, false).close(); QSqlDatabase::removeDatabase(name_); }
    bool exec(const QString& sql)
    {
        QSqlQuery q(QSqlDatabase::database(name_));
        return q.exec(sql);
    }
private:
    QString name_;
};
