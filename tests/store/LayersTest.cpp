#include <gtest/gtest.h>
#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QSet>

// The folders of velmora_core form layers: store, entry, shell, then masters, slips, ledgers
// and the reports. A folder that includes from a folder that includes it back ties both into
// one lump that can be neither tested nor changed alone.
namespace {

using Graph = QMap<QString, QMap<QString, QString>>;   // folder -> folder it includes -> one example

// The core's own files: screens and Qt drawing code go to velmora_ui, the program and the demo
// generator are not in the core.
Graph coreIncludes()
{
    const QString src = QStringLiteral(VELMORA_SOURCE_DIR "/src/");
    static const QRegularExpression ui(QStringLiteral("(_frm|/Qt[A-Za-z0-9_]*)\\.(cpp|h)$"));
    static const QRegularExpression include(QStringLiteral("^\\s*#\\s*include\\s+\"([A-Za-z0-9_]+)/[^\"]+\""),
                                            QRegularExpression::MultilineOption);
    Graph g;
    QDirIterator it(src, {QStringLiteral("*.cpp"), QStringLiteral("*.h")}, QDir::Files, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        const QString path = it.next();
        const QString rel = path.mid(src.size());
        const QString folder = rel.section(QLatin1Char('/'), 0, 0);
        if (ui.match(path).hasMatch() || folder == QLatin1String("app") || folder == QLatin1String("demo")) continue;
        QFile f(path);
        if (!f.open(QIODevice::ReadOnly)) continue;
        auto m = include.globalMatch(QString::fromUtf8(f.readAll()));
        while (m.hasNext()) {
            const auto hit = m.next();
            if (hit.captured(1) != folder) g[folder].insert(hit.captured(1), rel + QStringLiteral(" -> ") + hit.captured(0).trimmed());
        }
    }
    return g;
}

// A path of folders back to `start`, or empty.
QStringList cycleFrom(const Graph& g, const QString& start, const QString& at, QStringList path, QSet<QString>& seen)
{
    for (auto it = g.value(at).cbegin(); it != g.value(at).cend(); ++it) {
        if (it.key() == start) return path << it.value();
        if (seen.contains(it.key())) continue;
        seen.insert(it.key());
        const QStringList found = cycleFrom(g, start, it.key(), QStringList(path) << it.value(), seen);
        if (!found.isEmpty()) return found;
    }
    return {};
}

} // namespace

TEST(Layers, CoreFoldersIncludeEachOtherWithoutCycles)
{
    const Graph g = coreIncludes();
    ASSERT_TRUE(g.contains(QStringLiteral("slips")));   // the sources were found
    EXPECT_TRUE(g.value(QStringLiteral("store")).isEmpty()) << qPrintable(QStringList(g.value(QStringLiteral("store")).values()).join('\n'));
    for (const QString& folder : g.keys()) {
        QSet<QString> seen;
        const QStringList cycle = cycleFrom(g, folder, folder, {}, seen);
        EXPECT_TRUE(cycle.isEmpty()) << qPrintable(cycle.join(QLatin1Char('\n')));
    }
}
