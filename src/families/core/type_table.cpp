// hcTypeTable: named tables of (name, token) pairs.
#include "frame/class_def.h"

namespace {
using namespace hk;

const Row kRows[] = {
    fn<"hcTypeTable_create", "newName ", &hcTypeTable::create>,
    dtor<"delete_hcTypeTable", "{ hcTypeTable * } ", hcTypeTable>,
    fn<"hcTypeTable_addEntry", "{ hcTypeTable * } newName token ", &hcTypeTable::addEntry>,
    fn<"hcTypeTable_findToken", "{ hcTypeTable * } findName ", &hcTypeTable::findToken>,
    fn<"hcTypeTable_findName", "{ hcTypeTable * } token ", &hcTypeTable::findName>,
    fn<"hcTypeTable_findTable", "findName ", &hcTypeTable::findTable>,
};

}  // namespace

HK_CLASS(hcTypeTable, nullptr, kRows, kNoConstants);
