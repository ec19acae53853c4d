// hList: the host's circular lists of untyped pointers.
#include "convert/object_lists.h"
#include "frame/class_def.h"

namespace {
using namespace hk;

// The script's word is not changed: the host clears a local copy.
int DestroyList(hList *l) { return hList::destroy(&l, nullptr); }

const Row kRows[] = {
    fn<"hList_iterator", "sl l ", &hList::iterator>,
    custom(RowKind::Method, "hList_tcllist", &ListToTclList),
    fn<"hList_destroy", "l ", &DestroyList>,
};

}  // namespace

HK_CLASS(hList, nullptr, kRows, kNoConstants);
