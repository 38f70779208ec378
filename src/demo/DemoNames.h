#pragma once
// Word lists of the demo company: names in kanji with their readings, places with postal codes,
// classes and products. Readings are written here in full-width katakana for legibility and
// stored through halfKana, as a clerk types them on the masters.
#include <span>
#include <QString>

struct DemoWord {
    const char* text;   // UTF-8
    const char* kana;   // reading, full-width katakana
};

// A simple master row: code order is the list order from 1.
struct DemoClass {
    const char* text;
    const char* kana;
    const char* ryaku;
};

struct DemoPlace {
    const char* zip;    // seven digits
    const char* city;   // prefecture and city or ward
    const char* town;
    const char* area;   // telephone area code
    short cku;          // district
};

// One product line; every entry of `variants` ("text:percent|...") gives one product priced at
// `price` times percent / 100.
struct DemoItem {
    short hbn;
    const char* name;
    const char* kana;
    int price;          // yen
    const char* variants;
};

// Full-width katakana (and hiragana) to half-width katakana; other characters are dropped.
QString halfKana(const QString& text);
inline QString halfKana(const char* utf8) { return halfKana(QString::fromUtf8(utf8)); }

std::span<const DemoWord> demoSurnames();
std::span<const DemoWord> demoGivenNames();
std::span<const DemoWord> demoTradeNames();        // shop names such as 丸八, 三和
std::span<const DemoWord> demoCustomerSuffixes(int tbn);   // by customer class 1..5
std::span<const DemoWord> demoSupplierSuffixes();
std::span<const DemoWord> demoBranches();          // delivery destinations
std::span<const DemoWord> demoShopNames();         // Tenmei
std::span<const DemoWord> demoBanks();
std::span<const DemoWord> demoBankBranches();
std::span<const char* const> demoRemarks();

std::span<const DemoClass> demoTbn();
std::span<const DemoClass> demoSbn();
std::span<const DemoClass> demoHbn();
std::span<const DemoClass> demoCku();
std::span<const DemoClass> demoChi();
std::span<const char* const> demoUnits();

std::span<const DemoPlace> demoPlaces();
struct DemoZip {
    const char* zip;    // seven digits
    const char* addr;
};
// Further addresses under a code of demoPlaces: one code, several addresses.
std::span<const DemoZip> demoSharedZips();

std::span<const DemoItem> demoItems();
