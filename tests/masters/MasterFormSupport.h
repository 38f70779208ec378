#pragma once
// The store and keyboard of the master screen tests.
#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>

#include "entry/FormDriver.h"
#include "shell/Session.h"
#include "store/Sql.h"
#include "support/ScriptedDialogs.h"
#include "support/TempCompany.h"

// Readable failures.
inline void PrintTo(const QString& s, std::ostream* os) { *os << '"' << s.toStdString() << '"'; }
inline void PrintTo(const QStringList& l, std::ostream* os) { *os << '[' << l.join(" ; ").toStdString() << ']'; }

class MasterFormTest : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_TRUE(company.open()); }
    void TearDown() override
    {
        delete form.data();
        flushDeletes();
    }
    // Shows the form the way the menu does and waits until it has the keyboard.
    template <class F>
    F* show(F* f)
    {
        form = f;
        EXPECT_TRUE(showActive(f));
        return f;
    }
    static void run(const QString& sql, const QVariantList& binds = {})
    {
        ASSERT_EQ(execSql(session().MasterDb, sql, binds), ErrorClass::None) << qPrintable(sql);
    }
    static QString cell(const QString& sql) { return scalar(session().MasterDb, sql).toString(); }
    static int count(const QString& table) { return scalar(session().MasterDb, "SELECT COUNT(*) FROM " + table).toInt(); }

    TempCompany company;
    ScriptedDialogs dialogs;
    QPointer<QWidget> form;
};
