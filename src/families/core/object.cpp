// hcObject and hcNode: the named object and the tree node, whose commands
// every derived class re-registers.
#include <string>

#include "frame/classes.h"

namespace {
using namespace hk;

// One description buffer, shared by every object and interpreter; the next
// call overwrites it.
char description[10000];

const char *Tessprint(hcObject &object, int level) {
  description[0] = '\0';
  object.tessprint(description, level, sizeof description);
  description[sizeof description - 1] = '\0';
  return description;
}

// The host rewrites the name in place, so it works on a copy of the word,
// and the rewritten name is the answer.
int UniqueNameProc(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
  if (argc != 3) return UsageError(interp, UsageText<"hcObject_uniqueName", "uniqName objs ">());
  hList *objs = nullptr;
  if (!Arg<hList *>::parse(argv[2], objs))
    return TypeError(interp, 2, "hcObject_uniqueName", TypeString<hList *>(), argv[2]);
  std::string name = argv[1];
  hcObject::uniqueName(name.data(), objs);
  SetString(interp, name.c_str());
  return TCL_OK;
}

const Row kObjectRows[] = {
    fn<"hcObject_getClassType", "", &hcObject::getClassType>,
    setter<"hcObject_name_set", "{ hcObject * } { char * } ", &hcObject::name>,
    getter<"hcObject_name_get", "{ hcObject * } ", &hcObject::name>,
    setter<"hcObject_fullname_set", "{ hcObject * } { char * } ", &hcObject::fullname>,
    getter<"hcObject_fullname_get", "{ hcObject * } ", &hcObject::fullname>,
    ctor<"new_hcObject", "", hcObject>,
    dtor<"delete_hcObject", "{ hcObject * } ", hcObject>,
    fn<"hcObject_getName", "{ hcObject * } ", &hcObject::getName>,
    fn<"hcObject_getFullName", "{ hcObject * } ", &hcObject::getFullName>,
    fn<"hcObject_find", "objs fname ", &hcObject::find>,
    fn<"hcObject_setFullName", "{ hcObject * } prefix newName ", &hcObject::setFullName>,
    fn<"hcObject_setName", "{ hcObject * } newName ", &hcObject::setName>,
    custom(RowKind::Static, "hcObject_uniqueName", &UniqueNameProc),
    fn<"hcObject_getTimestamp", "{ hcObject * } ", &hcObject::getTimestamp>,
    fn<"hcObject_setTimestamp", "{ hcObject * } ", &hcObject::setTimestamp>,
    fn<"hcObject_notifySimFunc", "", &hcObject::notifySimFunc>,
    fn<"hcObject_getType", "{ hcObject * } ", &hcObject::getType>,
    fn<"hcObject_sprint", "{ hcObject * } buf ", &hcObject::sprint>,
    fn<"hcObject_getProperty", "{ hcObject * } property v ", &hcObject::getProperty>,
    fn<"hcObject_searchProperty", "{ hcObject * } property v ", &hcObject::searchProperty>,
    fn<"hcObject_setProperty", "{ hcObject * } property value ", &hcObject::setProperty>,
    fn<"hcObject_removeProperty", "{ hcObject * } property ", &hcObject::removeProperty>,
    fn<"hcObject_getPropertyList", "{ hcObject * } ", &hcObject::getPropertyList>,
    fn<"hcObject_setScriptObject", "{ hcObject * } object ", &hcObject::setScriptObject>,
    fn<"hcObject_getScriptObject", "{ hcObject * } ", &hcObject::getScriptObject>,
    method<"hcObject_tessprint", "{ hcObject * } ?level? ", &Tessprint, 0>,
};

const Row kNodeRows[] = {
    fn<"hcNode_getClassType", "", &hcNode::getClassType>,
    ctor<"new_hcNode", "", hcNode>,
    dtor<"delete_hcNode", "{ hcNode * } ", hcNode>,
    fn<"hcNode_getParent", "{ hcNode * } ", &hcNode::getParent>,
};

}  // namespace

HK_CLASS(hcObject, &hcSubject_class, kObjectRows, kNoConstants);
HK_CLASS(hcNode, &hcObject_class, kNodeRows, kNoConstants);
