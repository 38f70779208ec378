#pragma once
// A bad sector under a store file: one page overwritten with rubbish.
#include <QString>

// Overwrites the n-th leaf page of a table or index of the store file with rubbish; false when
// the object has no such page.
bool damageLeaf(const QString& path, const QString& object, int n);
