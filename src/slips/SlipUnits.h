#pragma once
// What saving a sales slip and saving a deposit have in common: a failed step keeps the store's
// own words; a save, an amendment or a deletion is one unit of work, rolled back before its
// failure is told, so that no message waits for the clerk while the write lock is held; and a
// number another station took meanwhile gives way to the next free one.
#include <functional>
#include <QString>
#include "store/Sql.h"

namespace SlipUnits {

struct Step {
    ErrorClass cls = ErrorClass::None;
    QString text;                      // "エラー：" with the store's number and text
    bool ok() const { return cls == ErrorClass::None; }
};

Step failed(ErrorClass cls, const QSqlError& e);
Step run(const QSqlDatabase& db, const QString& sql, const QVariantList& binds);

// Runs `body` as one unit of work on the session's connection. A failure is rolled back and
// then told; true when everything landed.
bool inUnit(const std::function<Step()>& body);

// `write` puts the rows of one number, each attempt in a unit of its own: a duplicate takes
// back only that attempt. A number taken meanwhile moves `number` to the next free one and
// sets `changed`; the counter is left as it is.
Step underFreeNumber(const QString& kind, short office, long& number, bool& changed,
                     const std::function<Step(long number)>& write);

}  // namespace SlipUnits
