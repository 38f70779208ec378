#pragma once
// `velmora demo`: a believable small wholesaler with a year of sales and purchases, paid for
// by deposits and payments, for trying the program and for measuring it.
#include <cstdint>
#include <QString>

struct DemoOptions {
    int slips = 3000;     // sales and purchase slips together
    uint64_t seed = 1;    // the same seed gives the same company
    int year = 0;         // fiscal year; 0: the one that contains today (it starts in April)
    int customers = 100;  // customers of the company (12 to 100000)
};

struct DemoSummary {
    int customers = 0;
    int destinations = 0;
    int suppliers = 0;
    int products = 0;
    int prices = 0;        // customer, destination and supplier prices
    int salesSlips = 0;
    int salesLines = 0;
    int purchaseSlips = 0;
    int purchaseLines = 0;
    int deposits = 0;
    int payments = 0;
    int cashRows = 0;      // rows of deposits and payments
    double seconds = 0;
    double cashSeconds = 0;   // of which the deposits and payments
};

// Creates the company in `dir` as `velmora new` does and fills it: each file in one
// transaction, then the deposits and payments in one more. Refuses a folder that already
// holds a store, changing nothing. On any failure `error` says why and nothing that was
// created is left behind.
bool createDemoCompany(const QString& dir, const DemoOptions& options, QString* error,
                       DemoSummary* summary = nullptr);
