#pragma once
// The record of one tree item, shared by the tree control's source files.

#include "platform/TreeCtrl.h"

// Trees hold up to millions of items, so an item keeps to 40 bytes: its depth is found by
// walking up, and its own text, which few items have, is kept aside in m_texts.
//
// `rows` counts the rows the item's subtree shows when the item itself is shown: 1, plus the
// children's counts while it is expanded. Rows are found by descending these counts, so no list
// of rows has to be rebuilt when items come and go.
struct CTreeCtrl::Item
{
    uint32_t parent = NoIndex;
    uint32_t firstChild = NoIndex;
    uint32_t lastChild = NoIndex;
    uint32_t prev = NoIndex;
    uint32_t next = NoIndex;
    uint32_t generation : 29 = 0;
    // A top-level item set aside by a rebuild (see KeepsRetiredItems); its subtree goes with it.
    uint32_t retired : 1 = 0;
    uint32_t alive : 1 = 0;
    uint32_t hasChildrenFlag : 1 = 0;
    uint32_t rows = 1;
    uint16_t state = 0; // every TVIS_ bit lies in the low half
    int16_t image = 0;
    LPARAM data = 0;
};
