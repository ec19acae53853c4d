// hcMaterial: colours, lighting terms and textures, and the host's material
// registry (create, find, list, count, destroy) with local and shared
// materials.
#include "frame/classes.h"

namespace {
using namespace hk;

// Colours and lighting terms are vectors the host reads or fills, so their
// words must name a vector.
const Row kRows[] = {
    fn<"hcMaterial_setName", "{ hcMaterial * } newName ", &hcMaterial::setName>,
    fn<"hcMaterial_setColor", "{ hcMaterial * } color ", &hcMaterial::setColor>,
    fn<"hcMaterial_getColor", "{ hcMaterial * } color ", &hcMaterial::getColor>,
    fn<"hcMaterial_getAmbient", "{ hcMaterial * } ambient ", &hcMaterial::getAmbient>,
    fn<"hcMaterial_getDiffuse", "{ hcMaterial * } diffuse ", &hcMaterial::getDiffuse>,
    fn<"hcMaterial_getSpecular", "{ hcMaterial * } specular ", &hcMaterial::getSpecular>,
    fn<"hcMaterial_getTransparent", "{ hcMaterial * } trans ", &hcMaterial::getTransparent>,
    fn<"hcMaterial_setAmbient", "{ hcMaterial * } ambient ", &hcMaterial::setAmbient>,
    fn<"hcMaterial_setDiffuse", "{ hcMaterial * } diffuse ", &hcMaterial::setDiffuse>,
    fn<"hcMaterial_setSpecular", "{ hcMaterial * } specular ", &hcMaterial::setSpecular>,
    fn<"hcMaterial_setTransparent", "{ hcMaterial * } trans ", &hcMaterial::setTransparent>,
    fn<"hcMaterial_setTexture", "{ hcMaterial * } filename type nreps ", &hcMaterial::setTexture>,
    fn<"hcMaterial_getTextureFile", "{ hcMaterial * } ", &hcMaterial::getTextureFile>,
    fn<"hcMaterial_getTexturePath", "{ hcMaterial * } ", &hcMaterial::getTexturePath>,
    fn<"hcMaterial_getGlossiness", "{ hcMaterial * } ", &hcMaterial::getGlossiness>,
    fn<"hcMaterial_setGlossiness", "{ hcMaterial * } n ", &hcMaterial::setGlossiness>,
    fn<"hcMaterial_getSG", "{ hcMaterial * } ", &hcMaterial::getSG>,
    fn<"hcMaterial_getTextures", "{ hcMaterial * } ", &hcMaterial::getTextures>,
    fn<"hcMaterial_getKAmbient", "{ hcMaterial * } ", &hcMaterial::getKAmbient>,
    fn<"hcMaterial_getKDiffuse", "{ hcMaterial * } ", &hcMaterial::getKDiffuse>,
    fn<"hcMaterial_create", "?newName? ", &hcMaterial::create, nullptr>,
    fn<"hcMaterial_resolve", "l ", &hcMaterial::resolve>,
    fn<"hcMaterial_count", "", &hcMaterial::count>,
    fn<"hcMaterial_find", "name ?o? ", &hcMaterial::find, nullptr>,
    fn<"hcMaterial_isOwner", "{ hcMaterial * } { hcObject * } ", &hcMaterial::isOwner>,
    fn<"hcMaterial_isUsedBy", "{ hcMaterial * } { hcFigure * } ", &hcMaterial::isUsedBy>,
    fn<"hcMaterial_makeLocal", "{ hcMaterial * } { hcObject * } ", &hcMaterial::makeLocal>,
    fn<"hcMaterial_makeShared", "{ hcMaterial * } ", &hcMaterial::makeShared>,
    fn<"hcMaterial_getMaterials", "{ hcObject * } ", &hcMaterial::getMaterials>,
    fn<"hcMaterial_list", "", &hcMaterial::list>,
    fn<"hcMaterial_loadUserPalette", "", &hcMaterial::loadUserPalette>,
    fn<"hcMaterial_destroy", "o ?m? ", &hcMaterial::destroy, nullptr>,
};

}  // namespace

HK_CLASS(hcMaterial, &hcObject_class, kRows, kNoConstants);
