// Registration tables walked by the module entry.
#pragma once

#include <tcl.h>

#include <vector>

namespace hk {

// One module-level command: a name and its procedure (created with NULL
// client data and no delete procedure).
struct CommandEntry {
  const char *name;
  Tcl_CmdProc *proc;
};

// The pointer library and the typed array commands, in registration order:
// ptrcast ptrvalue ptrset ptrcreate ptrfree ptradd ptrmap, then
// int_array int_destroy int_get int_set and the same four for double, float
// and string.
const std::vector<CommandEntry> &PointerLibraryCommands();

// The anthropometric database commands, in registration order:
// getNumAnthroDatabases getAnthroDatabaseName getNumPercentiles getPercentile
// getStatureValueInCM getWeightValueInKG getStatureLimits getWeightLimits
// conserveMemoryDuringScaling setScalingCacheDir getScalingCacheDir.
const std::vector<CommandEntry> &AnthroDatabaseCommands();

// hcscene_get: answers the host's current scene.
Tcl_CmdProc *SceneGetCommand();

}  // namespace hk
