// hcRefObject: objects that keep themselves on host lists.
#include "frame/class_def.h"

namespace {
using namespace hk;

const Row kRows[] = {
    ctor<"new_hcRefObject", "t ", hcRefObject, void(short)>,
    dtor<"delete_hcRefObject", "{ hcRefObject * } ", hcRefObject>,
    setter<"hcRefObject_magic_set", "{ hcRefObject * } { short  } ", &hcRefObject::magic>,
    getter<"hcRefObject_magic_get", "{ hcRefObject * } ", &hcRefObject::magic>,
    setter<"hcRefObject_type_set", "{ hcRefObject * } { short  } ", &hcRefObject::type>,
    getter<"hcRefObject_type_get", "{ hcRefObject * } ", &hcRefObject::type>,
    setter<"hcRefObject_list_set", "{ hcRefObject * } { hList ** } ", &hcRefObject::list>,
    getter<"hcRefObject_list_get", "{ hcRefObject * } ", &hcRefObject::list>,
    setter<"hcRefObject_lists_set", "{ hcRefObject * } { hList * } ", &hcRefObject::lists>,
    getter<"hcRefObject_lists_get", "{ hcRefObject * } ", &hcRefObject::lists>,
    setter<"hcRefObject_deleting_flag_set", "{ hcRefObject * } { int  } ", &hcRefObject::deleting_flag>,
    getter<"hcRefObject_deleting_flag_get", "{ hcRefObject * } ", &hcRefObject::deleting_flag>,
    fn<"hcRefObject_attach", "{ hcRefObject * } l ", &hcRefObject::attach>,
    fn<"hcRefObject_detach", "{ hcRefObject * } ?l? ", &hcRefObject::detach, nullptr>,
    fn<"hcRefObject_set_detach_behavior", "{ hcRefObject * } i ", &hcRefObject::set_detach_behavior>,
};

}  // namespace

HK_CLASS(hcRefObject, nullptr, kRows, kNoConstants);
