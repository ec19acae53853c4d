// Host library: the kit, the simulation loop and process-wide settings.
//
// All three classes have static operations only; their state lives in the
// host library for the life of the process.
//
//   hcKit     start-up (data and install paths), identity, message routing
//             (one handler per message type), selection functions of the
//             embedding application, condition subjects, environment and
//             working directory.
//   hcSim     the simulation loop: current time, time limit, step factor,
//             iteration limits, solver switches, and callbacks bound to
//             named places ("where") in the loop.
//   hcGlobal  the current scene (hcscene) and timeline, a global timestamp
//             and the list of installed files.
//
// The simulation loop.  hcSim::advance() runs the callbacks bound at
// "preStep", moves the current time on by the time per iteration, then runs
// those bound at "postStep" and, last, those at "postAdvance" (once per
// advance that moved the time).  With a time limit above 0 it refuses to move
// once the current time has reached the limit.  Any other place name is the
// binder's own: hcSim::execCallbacks(where, ...) runs whatever is bound there.
//
// Callbacks.  A binding is an hcCallback record owned by the host.  Its
// first four fields are pointer-sized and their order is part of the host's
// interface: binders that only know the record as an opaque pointer (the
// script bridge of the extension in particular) read the binding's name,
// which for them is the text to evaluate, from the fourth slot.  Records
// unbound while callbacks run are freed once the outermost run has ended.
//
// Messages.  hcKit::sendMsg(text, type) hands a modifiable copy of text to
// the handler bound for type (0 error, 1 warning, 2 information, 3 file)
// and answers the handler's result; without a handler it answers 0.  The
// host raises its own: an error naming the path of a file it cannot read,
// parse ("cannot parse <path>") or write, or of a data path given to Init
// that is not a directory (the path is stored all the same), and the type
// and text of every Python exception; a warning naming an unknown unit word
// ("unknown unit <word>"); information from toggleDebug ("debugging <flags
// on>" or "debugging off") and from debugConstraints / debugMotions (a
// header "N constraints" or "N motions", then one line per item: its name
// and "active" or "inactive"); a file message "read <path>" or "wrote
// <path>" for every file opened.
//
// Nesting.  Callbacks and message handlers may call back into the host; runs
// nested deeper than kMaxNesting are skipped, so that a handler raising its
// own message cannot recurse without end.
//
// Null or out-of-range arguments make every operation answer its failure
// value (0 or null).
#pragma once

#include <cstddef>

#include "host/core.h"

class hcFigure;
class hcScene;
class hcTimeline;
class sgFactory;  // the embedding application's graphics factory; opaque here

// ---------------------------------------------------------------------------
struct hcCallback {
  using Function = int (*)(void *data, hcCallback *record);

  char *where;        // slot 0: the place in the loop (host-owned copy)
  Function function;  // slot 1: called as function(data, record)
  void *data;         // slot 2: the binder's data, as given at binding
  char *name;         // slot 3: the binding's name (host-owned copy, or null)
  void *localData;    // the local data of the run in progress, null otherwise
  int live;           // 1 while bound
};
static_assert(sizeof(hcCallback::Function) == sizeof(void *));
static_assert(offsetof(hcCallback, name) == 3 * sizeof(void *),
              "binders read the name from the fourth pointer-sized slot");

// ---------------------------------------------------------------------------
class hcKit {
 public:
  enum msgType : int { ERR = 0, WARN = 1, INFO = 2, FILE = 3 };
  enum selectType : int { FIGURE = 0, SEGMENT = 1, JOINT = 2, SITE = 3 };
  enum e_condition : int {
    SCENE_FIGURE_NUMBER = 0, SCENE_FIGURE_CREATE = 1, SCENE_FIGURE_DELETE = 2,
    SCENE_SEGMENT_NUMBER = 3, SCENE_SEGMENT_CREATE = 4, SCENE_SEGMENT_DELETE = 5,
    SCENE_SITE_NUMBER = 6, SCENE_SITE_CREATE = 7, SCENE_SITE_DELETE = 8
  };
  static constexpr int kMsgTypes = 4;
  static constexpr int kSelectTypes = 4;
  static constexpr int kConditions = 9;
  static constexpr int kMaxNesting = 64;

  using msgHandlerType = int (*)(char *message);
  using selectorType = char *(*)();

  // Stores the paths (copies; installPath may be null) and the factory and
  // marks the kit started.  Answers 1, or 0 for a null dataPath.  A later
  // call replaces what the earlier one stored.
  static int Init(const char *dataPath, sgFactory *factory, const char *installPath, int fromPython);
  static int isInited();
  static void setHostName(const char *name);  // null clears it
  static const char *getHostName();           // null until set
  // Binds handler to type; a null handler removes the binding.  Answers 1
  // for a type 0..3, 0 (nothing changed) otherwise.
  static int setMsgHandler(msgHandlerType handler, int type);
  static msgHandlerType getMsgHandler(int type);  // null if none or bad type
  // Changes the working directory to the data path; ignored when the kit
  // has no data path or the directory cannot be entered.
  static void changeCWD();
  static const char *getVersion();     // "8.3"
  static const char *getPatchlevel();  // "8.3.0"
  static const char *getCopyright();
  static const char *getBuildInfo();
  // Toggles each blank-separated flag named in options; answers how many
  // flags are on afterwards (0 for null).
  static int toggleDebug(const char *options);
  // Binds the selection function of a selectType; null removes it.  Answers
  // 1 for a type 0..3, 0 otherwise.
  static int setSelector(selectorType selector, int type);
  // What the selection function of type answers; null without one.
  static const char *selectEntity(int type);
  // The subject that stands for condition e (0..8); null otherwise.
  static hcSubject *getConditionSubject(int e);
  // "NAME=VALUE" sets the process environment variable NAME (a copy of the
  // text is kept).  Answers 0 on success, -1 for null or text without a
  // name before "=".
  static int putenv(const char *envString);
  static int sendMsg(const char *message, int type);

  // Host-side state, for the host's own use and for tests.
  static const char *getDataPath();     // null before Init
  static const char *getInstallPath();  // null unless given
  static sgFactory *getFactory();
  static int getFromPython();
};

// ---------------------------------------------------------------------------
class hcSim {
 public:
  enum searchLevel : int { noSearchOpt = 0, inParser = 1, runTime = 2, all = 3 };
  enum updateHostTypes : int { basic = 0, override = 1, rebuild = 3 };

  // One step of the loop (see the header comment).  Answers 1 when the
  // time moved on, 0 when the time limit stopped it.
  static int advance();
  // Counts a display update of the host; answers 1 for a known type (0, 1,
  // 3), 0 otherwise.
  static int updateHost(updateHostTypes type);
  static int getTimeLimit();  // 0: no limit
  static void setTimeLimit(int limit);
  static float getStepFactor();  // 1 at start
  static void setStepFactor(float factor);
  // Runs the callbacks bound at where, in binding order, with localData
  // stored in each record for the duration of its call.
  static void execCallbacks(const char *where, void *localData);
  // The first record bound at where under name; a null data matches any
  // data, other data only records bound with it.
  static hcCallback *findCallback(const char *where, const char *name, void *data);
  static int getCurrentTime();
  static int getSimulationMode();
  static void setSimulationMode(int newmode);
  static int getMaxIters();  // 100 at start
  static void setMaxIters(int iters);
  static int getTimePerIter();  // 1 at start
  static void setTimePerIter(int time);
  static int getUseLimitsDuringAnim();
  static void setUseLimitsDuringAnim(int use);
  static void debugConstraints(int activeonly);
  static void debugMotions(int activeonly);
  static void setConstraintSolver(int on);  // on at start
  static int getConstraintSolver();
  static void setHumanBehaviors(int on);  // on at start
  static int getHumanBehaviors();
  static void setOptimizeSetRoot(int on);
  static int getOptimizeSetRoot();
  static void setOptimizeTesselSearch(searchLevel level);
  static searchLevel getOptimizeTesselSearch();
  // 1 when the tessellation search is optimised in the parser (level
  // inParser or all), 0 otherwise.
  static int isParserFigureOpt(hcFigure &figure);
  static void setFigureCOMEpsilon(float e);  // 0.001 at start
  static float getFigureCOMEpsilon();
  // A new record at where calling function(data, record); null for a null
  // where or function.
  static hcCallback *bindCallback(const char *where, const char *name, hcCallback::Function function,
                                  void *data);
  // Removes a record made by bindCallback; answers 1, or 0 when cb is not a
  // bound record (null, or already unbound).
  static int unbindCallback(hcCallback *cb);
  // Number of bound records (all places); for tests.
  static int countCallbacks();
};

// ---------------------------------------------------------------------------
class hcGlobal {
 public:
  // Moves the global timestamp on by one and answers the new value.
  static int setTimestamp();
  static int getTimestamp();
  static hcTimeline *getTimeline();  // null until the host sets one
  static hcScene *getScene();        // the current scene, hcscene
  // Changes the working directory to the install path given to hcKit::Init;
  // ignored without one.
  static void changeCWD();
  // Answers 1 when fileName was added, 0 when it is null or listed already.
  static int addInstalledFile(const char *fileName);
  // Answers 1 when fileName was listed and is removed, 0 otherwise.
  static int removeInstalledFile(const char *fileName);
  // Writes up to max names of the list (a few fixed names of the host's own
  // installation first, then the added ones, in order) into array; answers
  // how many it wrote (0 for a null array or max below 1).  The texts stay
  // the host's, valid until the list changes.
  static int getInstalledFiles(char **array, int max);

  // Host-side: which timeline is current.
  static void setTimeline(hcTimeline *timeline);
};
