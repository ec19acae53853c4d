// hcObserver and hcSubject: the observer pattern.
#include "frame/classes.h"

namespace {
using namespace hk;

const Row kObserverRows[] = {
    ctor<"new_hcObserver", "name tstring subject ?prot? ", hcObserver,
         void(const char *, const char *, hcSubject *, int), hcObserver::ALL>,
    fn<"hcObserver_update", "{ hcObserver * } protocol ", &hcObserver::update>,
    fn<"hcObserver_getName", "{ hcObserver * } ", &hcObserver::getName>,
    fn<"hcObserver_setName", "{ hcObserver * } n ", &hcObserver::setName>,
    fn<"hcObserver_getTypeIndex", "{ hcObserver * } ", &hcObserver::getTypeIndex>,
    fn<"hcObserver_getTypeName", "{ hcObserver * } ", &hcObserver::getTypeName>,
    fn<"hcObserver_getList", "", &hcObserver::getList>,
    fn<"hcObserver_getObserverList", "", &hcObserver::getObserverList>,
    fn<"hcObserver_find", "name ", &hcObserver::find>,
    fn<"hcObserver_getTypeTable", "", &hcObserver::getTypeTable>,
    fn<"hcObserver_purge", "", &hcObserver::purge>,
    fn<"hcObserver_setSubject", "{ hcObserver * } subject ?protocol? ", &hcObserver::setSubject, hcObserver::ALL>,
    fn<"hcObserver_getNumberPurgeObservers", "", &hcObserver::getNumberPurgeObservers>,
};

const ConstantDef kObserverConstants[] = {
    {"UPDATE", hcObserver::UPDATE},
    {"DESTROY", hcObserver::DESTROY},
    {"ALL", hcObserver::ALL},
};

const Row kSubjectRows[] = {
    ctor<"new_hcSubject", "", hcSubject>,
    dtor<"delete_hcSubject", "{ hcSubject * } ", hcSubject>,
    fn<"hcSubject_attach", "{ hcSubject * } obj ?aspect? ", &hcSubject::attach, hcObserver::ALL>,
    fn<"hcSubject_detach", "{ hcSubject * } obj ", &hcSubject::detach>,
    fn<"hcSubject_notify", "{ hcSubject * } protocol ", &hcSubject::notify>,
    fn<"hcSubject_invalid", "{ hcSubject * } ", &hcSubject::invalid>,
    fn<"hcSubject_getObservers", "{ hcSubject * } ?protocol? ", &hcSubject::getObservers, hcObserver::ALL>,
};

}  // namespace

HK_CLASS(hcObserver, nullptr, kObserverRows, kObserverConstants);
HK_CLASS(hcSubject, nullptr, kSubjectRows, kNoConstants);
