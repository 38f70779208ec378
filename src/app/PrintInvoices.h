#pragma once
// `velmora print invoices` and `velmora print slip`.
void registerInvoicePrints();
