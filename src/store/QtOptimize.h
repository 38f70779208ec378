#pragma once
// "データ最適化" after its confirmation: both files of the year compacted, then the end.

// Closes the session's store, compacts, says "ベルモーラを終了します。" and ends the program.
// A company whose master file is not where the compaction looks for it is told so and nothing
// happens; a failed compaction is told, the files stay as they were and the session goes on.
void OptimizeStore();
