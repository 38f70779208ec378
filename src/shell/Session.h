#pragma once
// The session record is kept with the store, the lowest layer that reads it (opening sets
// MasterDb, YearFolderMode and Nendo); everything above the store includes it from here.
#include "store/Session.h"
