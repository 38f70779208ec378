#pragma once
// `velmora print products | monthly | cutoff`: the product summary, the monthly copy and the
// period cut-off list, drawn by the classes their screens use.
void registerSummaryPrints();
