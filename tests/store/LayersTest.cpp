#include <gtest/gtest.h>
#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QRegularExpression>

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

} // namespace

TEST(Layers, CoreFoldersIncludeEachOtherWithoutCycles)
{
    Graph g = coreIncludes();
    ASSERT_TRUE(g.contains(QStringLiteral("slips")));   // the sources were found
    EXPECT_TRUE(g.value(QStringLiteral("store")).isEmpty()) << qPrintable(QStringList(g.value(QStringLiteral("store")).values()).join('\n'));
    // Peel off the folders that include no folder left; those that stay include each other.
    for (bool peeled = true; peeled;) {
        peeled = false;
        for (const QString& folder : g.keys()) {
            bool leaf = true;
            for (const QString& to : g.value(folder).keys()) leaf = leaf && !g.contains(to);
            if (leaf) peeled = g.remove(folder) > 0;
        }
    }
    QStringList tied;
    for (const auto& includes : std::as_const(g)) tied << includes.values();
    EXPECT_TRUE(g.isEmpty()) << qPrintable(tied.join(QLatin1Char('\n')));
}
