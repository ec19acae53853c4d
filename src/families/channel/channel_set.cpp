// hcChannelSet, hcChannelBinding and hcBoundChannelSet: channel sets, their
// files and registries, and channel sets bound to figures.  The commands
// that take or answer Tcl lists are written out here; the conversions
// themselves are the shared ones of convert/object_lists.h.
#include <cstdlib>
#include <span>

#include "convert/object_lists.h"
#include "frame/classes.h"

namespace {
using namespace hk;

int ChannelSetSave(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
  if (argc != 8)
    return UsageError(interp, UsageText<"hcChannelSet_save", "filename figList name from to stride fps ">());
  TempList figures;
  LenientObjectList(interp, argv[2], TypeString<hcFigure *>(), figures);
  const int status = hcChannelSet::save(argv[1], figures.head, argv[3], std::atol(argv[4]), std::atol(argv[5]),
                                        std::atol(argv[6]), std::atol(argv[7]));
  SetLong(interp, status);
  return TCL_OK;
}

int ChannelSetSaveSubset(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
  static constexpr const char *kName = "hcChannelSet_saveSubset";
  if (argc != 9)
    return UsageError(interp, UsageText<"hcChannelSet_saveSubset",
                                        "{ hcChannelSet * } sfilename savecList cname from to stride fps ">());
  hcChannelSet *cs = nullptr;
  if (!TakeObject(interp, kName, argv[1], cs)) return TCL_ERROR;
  TempList channels;
  LenientObjectList(interp, argv[3], TypeString<hcChannel *>(), channels);
  const int status = cs->saveSubset(argv[2], channels.head, argv[4], std::atol(argv[5]), std::atol(argv[6]),
                                    std::atol(argv[7]), std::atol(argv[8]));
  SetLong(interp, status);
  return TCL_OK;
}

int ChannelSetGetList(ClientData, Tcl_Interp *interp, int argc, const char *[]) {
  if (argc != 1) return UsageError(interp, UsageText<"hcChannelSet_getList", "">());
  AppendResolved(interp, hcChannelSet::globalList, &hcChannelSet::resolve, TypeString<hcChannelSet *>());
  return TCL_OK;
}

int ChannelSetGetChannels(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
  if (argc != 2) return UsageError(interp, UsageText<"hcChannelSet_getChannels", "{ hcChannelSet * } ">());
  hcChannelSet *cs = nullptr;
  if (!TakeObject(interp, "hcChannelSet_getChannels", argv[1], cs)) return TCL_ERROR;
  AppendResolved(interp, cs->getChannelList(), &hcChannel::resolve, TypeString<hcChannel *>());
  return TCL_OK;
}

int ChannelSetGetProtoList(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
  if (argc != 2) return UsageError(interp, UsageText<"hcChannelSet_getProtoList", "{ hcChannelSet * } ">());
  hcChannelSet *cs = nullptr;
  if (!TakeObject(interp, "hcChannelSet_getProtoList", argv[1], cs)) return TCL_ERROR;
  hList *prototypes = cs->getPrototypes();
  AppendConsumedTexts(interp, prototypes);
  return TCL_OK;
}

int BoundCreateEmpty(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
  if (argc != 3) return UsageError(interp, UsageText<"hcBoundChannelSet_createEmpty", "n objectList ">());
  TempList objects;
  hcBoundChannelSet *bcs = nullptr;
  if (StrictObjectList(interp, argv[2], TypeString<hcObject *>(), objects))
    bcs = hcBoundChannelSet::createEmpty(argv[1], objects.head);
  SetPointer(interp, bcs, TypeString<hcBoundChannelSet *>());
  return TCL_OK;
}

int BoundBind(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
  if (argc != 3)
    return UsageError(interp, UsageText<"hcBoundChannelSet_bind", "{ hcBoundChannelSet * } objectList ">());
  hcBoundChannelSet *bcs = nullptr;
  if (!TakeObject(interp, "hcBoundChannelSet_bind", argv[1], bcs)) return TCL_ERROR;
  TempList figures;
  int bound = 0;
  if (StrictObjectList(interp, argv[2], TypeString<hcFigure *>(), figures)) bound = bcs->bind(figures.head);
  SetLong(interp, bound);
  return TCL_OK;
}

int BoundGetList(ClientData, Tcl_Interp *interp, int argc, const char *[]) {
  if (argc != 1) return UsageError(interp, UsageText<"hcBoundChannelSet_getList", "">());
  AppendResolved(interp, hcBoundChannelSet::globalList, &hcBoundChannelSet::resolve,
                 TypeString<hcBoundChannelSet *>());
  return TCL_OK;
}

int BoundGetFigList(ClientData, Tcl_Interp *interp, int argc, const char *argv[]) {
  if (argc != 2)
    return UsageError(interp, UsageText<"hcBoundChannelSet_getFigList", "{ hcBoundChannelSet * } ">());
  hcBoundChannelSet *bcs = nullptr;
  if (!TakeObject(interp, "hcBoundChannelSet_getFigList", argv[1], bcs)) return TCL_ERROR;
  AppendPointers(interp, &bcs->getFigList(), TypeString<hcFigure *>());
  return TCL_OK;
}

const Row kSetRows[] = {
    ctor<"new_hcChannelSet", "n ", hcChannelSet, void(const char *)>,
    fn<"hcChannelSet_destroy", "cs ", &hcChannelSet::destroy>,
    fn<"hcChannelSet_load", "filename ", &hcChannelSet::load>,
    fn<"hcChannelSet_find", "name ", &hcChannelSet::find>,
    fn<"hcChannelSet_getName", "{ hcChannelSet * } ", &hcChannelSet::getName>,
    fn<"hcChannelSet_resolve", "l ", &hcChannelSet::resolve>,
    fn<"hcChannelSet_printinfo", "{ hcChannelSet * } ?show? ", &hcChannelSet::printinfo, 1>,
    fn<"hcChannelSet_printCS", "name ?show? ", &hcChannelSet::printCS, 1>,
    fn<"hcChannelSet_printAll", "?show? ", &hcChannelSet::printAll, 1>,
    fn<"hcChannelSet_setRealtimeMethod", "{ hcChannelSet * } which ", &hcChannelSet::setRealtimeMethod>,
    fn<"hcChannelSet_getRealtimeMethod", "{ hcChannelSet * } ", &hcChannelSet::getRealtimeMethod>,
    fn<"hcChannelSet_stuffRealtime", "{ hcChannelSet * } rt doconstraints interpolate ",
       &hcChannelSet::stuffRealtime>,
    fn<"hcChannelSet_getSize", "{ hcChannelSet * } ", &hcChannelSet::getSize>,
    fn<"hcChannelSet_getFPS", "{ hcChannelSet * } ", &hcChannelSet::getFPS>,
    fn<"hcChannelSet_setFPS", "{ hcChannelSet * } fpsv ", &hcChannelSet::setFPS>,
    fn<"hcChannelSet_addChannel", "{ hcChannelSet * } ch ", &hcChannelSet::addChannel>,
    fn<"hcChannelSet_removeChannel", "{ hcChannelSet * } ch ", &hcChannelSet::removeChannel>,
    fn<"hcChannelSet_hasChannel", "{ hcChannelSet * } ch ", &hcChannelSet::hasChannel>,
    fn<"hcChannelSet_saveInternal", "filename ?name? ", &hcChannelSet::saveInternal, nullptr>,
    fn<"hcChannelSet_stuffToInternal", "{ hcChannelSet * } ", &hcChannelSet::stuffToInternal>,
    custom(RowKind::Static, "hcChannelSet_save", &ChannelSetSave),
    custom(RowKind::Method, "hcChannelSet_saveSubset", &ChannelSetSaveSubset),
    custom(RowKind::Static, "hcChannelSet_getList", &ChannelSetGetList),
    custom(RowKind::Method, "hcChannelSet_getChannels", &ChannelSetGetChannels),
    custom(RowKind::Method, "hcChannelSet_getProtoList", &ChannelSetGetProtoList),
};

// Results of bindToPrototype.
const ConstantDef kBoundConstants[] = {
    {"OK", hcBoundChannelSet::OK},
    {"Found", hcBoundChannelSet::Found},
    {"Failed", hcBoundChannelSet::Failed},
};

const Row kBoundRows[] = {
    fn<"hcBoundChannelSet_getSize", "{ hcBoundChannelSet * } ", &hcBoundChannelSet::getSize>,
    fn<"hcBoundChannelSet_isBound", "{ hcBoundChannelSet * } ", &hcBoundChannelSet::isBound>,
    fn<"hcBoundChannelSet_getChannelSet", "{ hcBoundChannelSet * } ", &hcBoundChannelSet::getChannelSet>,
    fn<"hcBoundChannelSet_getFigureBinding", "{ hcBoundChannelSet * } figure ",
       &hcBoundChannelSet::getFigureBinding>,
    fn<"hcBoundChannelSet_find", "name ", &hcBoundChannelSet::find>,
    fn<"hcBoundChannelSet_grab", "{ hcBoundChannelSet * } t ", &hcBoundChannelSet::grab>,
    fn<"hcBoundChannelSet_stuff", "{ hcBoundChannelSet * } t ?fraction? ", &hcBoundChannelSet::stuff, 0.0>,
    fn<"hcBoundChannelSet_create", "n c ", &hcBoundChannelSet::create>,
    fn<"hcBoundChannelSet_resize", "{ hcBoundChannelSet * } size ", &hcBoundChannelSet::resize>,
    fn<"hcBoundChannelSet_saveCS", "{ hcBoundChannelSet * } filename from to stride fps ?csname? ",
       &hcBoundChannelSet::saveCS, nullptr>,
    fn<"hcBoundChannelSet_unbind", "{ hcBoundChannelSet * } ", &hcBoundChannelSet::unbind>,
    fn<"hcBoundChannelSet_getCS", "{ hcBoundChannelSet * } ", &hcBoundChannelSet::getCS>,
    fn<"hcBoundChannelSet_destroy", "bcs destroyCS ", &hcBoundChannelSet::destroy>,
    fn<"hcBoundChannelSet_getName", "{ hcBoundChannelSet * } ", &hcBoundChannelSet::getName>,
    fn<"hcBoundChannelSet_bindToPrototype", "{ hcBoundChannelSet * } proto figure ",
       &hcBoundChannelSet::bindToPrototype>,
    fn<"hcBoundChannelSet_resolve", "l ", &hcBoundChannelSet::resolve>,
    custom(RowKind::Static, "hcBoundChannelSet_createEmpty", &BoundCreateEmpty),
    custom(RowKind::Method, "hcBoundChannelSet_bind", &BoundBind),
    custom(RowKind::Static, "hcBoundChannelSet_getList", &BoundGetList),
    custom(RowKind::Method, "hcBoundChannelSet_getFigList", &BoundGetFigList),
};

}  // namespace

HK_CLASS(hcChannelSet, nullptr, kSetRows, kNoConstants);
// Bindings come from the host: the class command only binds existing ones.
HK_CLASS(hcChannelBinding, nullptr, std::span<const hk::Row>{}, kNoConstants);
HK_CLASS(hcBoundChannelSet, nullptr, kBoundRows, kBoundConstants);
