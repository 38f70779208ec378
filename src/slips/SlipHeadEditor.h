#pragma once
// What the slip screen and the deposit screen share above their rows: the number, the date,
// the partner with its class, the lists they are chosen from, and the first checks before a
// save. Below the head the two screens part ways; each editor adds its own fields and rules.
#include <optional>
#include <QDate>
#include <QList>
#include <QString>
#include "entry/ChoiceLists.h"

class Query;

// Where the focus goes after a check refused the slip.
enum class SlipFocus { None, Number, Year, Partner, Nou, FirstRowKind };

// A lookup list call: the table word and its two filters.
struct SlipLookup {
    QString table, filter1, filter2;
};

// The head fields of both screens, as the screen holds them.
struct PartnerHead {
    QString Dno;                        // "伝票No." as typed
    QString Year, Month, Day;
    std::optional<qint64> ClassCode;    // TbnCode / SbnCode
    std::optional<qint64> Partner;      // TorCode / SirCode
    std::optional<qint64> NouCode;      // customers only
    std::optional<qint64> TanCode;
};

class SlipHeadEditor {
public:
    enum class NumberOutcome { New, Edit, Unchanged };

    virtual ~SlipHeadEditor() = default;

    // The kind word: the table of the head ("Dur", "Dsr") or of the rows ("Dny", "Dsh").
    const QString& kind() const { return kind_; }
    QString classCaption() const;
    QString partnerCaption() const;
    QString classTable() const;
    QString partnerTable() const;

    QString mode;                       // "NEW", "EDIT", or empty while waiting for a number
    long loadedDno = 0;
    QString Getudo;
    QString weekday;
    QList<ListEntry> classEntries, partnerEntries, nouEntries, tanEntries;

    // The head fields the two editors share.
    virtual PartnerHead& partnerHead() = 0;
    const PartnerHead& partnerHead() const { return const_cast<SlipHeadEditor*>(this)->partnerHead(); }

    // Enter in the number field: 0 brings the counter, then NEW or EDIT with the slip shown.
    // The number is remembered: Enter on the number already in work changes nothing.
    virtual NumberOutcome enterNumber() = 0;
    void loadLists();
    long number() const;
    QDate slipDate() const;
    void refreshWeekday();
    // Leaving the class list without a partner refills the partner list.
    void classLeft();

    // Lookups of F6.
    SlipLookup classLookup() const;
    SlipLookup partnerLookup() const;

    // Customers and their destinations, or suppliers.
    bool customers() const { return customers_; }

protected:
    SlipHeadEditor(const QString& kind, bool customers) : kind_(kind), customers_(customers) {}
    void setKindWord(const QString& kind, bool customers);

    void fillPartnerEntries();
    // Enter in the number field: `n` becomes the typed number, or the counter for 0. Nothing
    // when it is the number already in work; otherwise whether a slip of it is stored.
    std::optional<bool> findNumber(long& n) const;
    void showDate(const QDate& date);
    // Date, staff, class and partner of a stored slip; a partner moved to another class since
    // stays in the list.
    void showStoredHead(const Query& q, const QString& classColumn, const QString& partnerColumn);
    // A partner chosen on a new slip brings its class and staff where none is chosen.
    void takeClassAndStaff(const Query& partnerRow, qint64 code, const QString& classColumn);
    // The date by the closing day; sets Getudo, or tells the refusal and answers false.
    bool takeClosingMonth(short sime);
    // Number, date and partner, in this order; the first fault is told.
    SlipFocus checkHead(bool numberOk) const;

private:
    QString kind_;
    bool customers_;
};
