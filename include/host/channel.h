// Host library: channels, channel sets and bound channel sets.
//
// A channel (hcChannel) holds one record per frame over a range of frames
// [start, start + size): the joint values of a joint (hcJointChannel), the
// location matrix of a figure (hcFigureChannel), a real-time stamp
// (hcRealtimeChannel) or the visibility of a segment (VisibilityChannel).
// A plain hcChannel holds records of a given number of bytes that nothing
// interprets.  Frames are numbered as the caller numbers them; a frame
// outside the range, or one that was never recorded, has no data.
//
//   grab(t)           reads the channel's object into frame t (recording it)
//                     and answers the frame's record;
//   stuff(t, f)       puts frame t back into the object, interpolated towards
//                     frame t + 1 by the fraction f when both are recorded,
//                     and answers the frame's record;
//   sprintat / scan   write a frame as text / set a frame from a value.
//
// Targets and prototypes.  A channel made for an object targets it; its
// prototype is the name of the figure the object belongs to, and its target
// name is the object's own name (the joint or segment name; the figure name
// for a figure channel).  Binding a channel to a figure (bind) looks the
// target up by that name in the figure.  Every channel watches its target
// through an observer, so that a destroyed target leaves the channel unbound
// instead of dangling.  Real-time and plain channels have no target and no
// prototype.
//
// Channel sets group channels; every set is on the registry
// hcChannelSet::globalList.  A set owns the channels it made itself (when
// reading a file or recording figures); channels added with addChannel stay
// their maker's.  A destroyed channel leaves every set.  Sets are written to
// and read from a line-oriented text file:
//
//   hkchannelset 1
//   name <set name>
//   fps <frames per second>
//   method <real-time method>
//   channel <kind> <start> <size> <p1> <p2>    kind: generic joint figure
//   name <channel name>                              realtime visibility
//   prototype <figure name>
//   target <object name>
//   frame <t> <values ...>                     zero or more
//   endchannel
//   ...                                        zero or more channels
//   end
//
// (p1, p2) are (bytes per frame, 0) for generic, (DOF count, 0) for joint,
// (0, 0) for figure, (mfps, startreal) for realtime and (forHarlChannels, 0)
// for visibility channels.  Frame values: hexadecimal bytes (generic), one
// number per DOF in radians (joint), sixteen numbers row by row (figure),
// one number in seconds (realtime), 0 or 1 (visibility).  Reading accepts
// exactly this form; anything else makes the whole read fail.
//
// Bound channel sets (hcBoundChannelSet, registry
// hcBoundChannelSet::globalList) bind the prototypes of a channel set to
// figures, one hcChannelBinding per prototype, and grab or stuff every
// bound channel at once.
//
// Printing operations with show set hand their text to hcKit::sendMsg as
// information messages; they answer how many channels or sets they covered.
//
// Null or out-of-range arguments make every operation answer its failure
// value (0 or null) and leave outputs untouched.
#pragma once

#include <cstddef>
#include <list>
#include <string>
#include <vector>

#include "host/core.h"

class hcFigure;
class hcJoint;
class hcSegment;
class hcChannelBinding;
class hcChannelSet;
class hcBoundChannelSet;
class VisibilityChannel;
class VisibilityChannelObserver;
struct hcChannelFile;

// ---------------------------------------------------------------------------
class hcChannel : public hcObject {
 public:
  struct channelList : std::list<hcChannel *> {};
  // Channel kinds (getChannelType); a plain channel has whatever type it was
  // made with.
  enum { GENERIC = 0, JOINT = 1, FIGURE = 2, REALTIME = 3, VISIBILITY = 4 };
  // Limits of one channel: frames, and bytes of frame storage.  A channel
  // asked for more gets no frames.
  static constexpr int kMaxFrames = 100000;
  static constexpr std::size_t kMaxBytes = std::size_t(64) << 20;

  // A plain channel of duration frames of dataSize bytes each; param is an
  // opaque key that findChannel compares.
  hcChannel(int type, int start, int duration, void *param, unsigned int dataSize, const char *name);
  ~hcChannel() override;

  // Switches the channel on or off; answers the previous state.
  int activate(int on);
  int activep();
  // 1 when frame t lies in the range and has been recorded.
  int at(int t);
  // Every live channel, in creation order.
  static channelList *getList();
  // The first channel named name (and, with param, keyed by param).
  static hcChannel *findChannel(const char *name, void *param = nullptr);
  int getChannelType();
  int getSize();  // number of frames
  const char *getPrototype();  // null without one
  // The first channel of chlist (a list of channels) of kind type.
  static hcChannel *findByType(hList *chlist, int type);
  static hcChannel *resolve(hList *l);  // the channel held by node l
  // Print every (active, unless all) channel; answer how many.
  static int printAll(int all = 0, int show = 1);
  // Print the channels of a list under the heading name; answer how many.
  static int printList(hList *channels, const char *name, int all = 0, int show = 1);
  // Print every channel named name; answer how many.
  static int printChannel(const char *name, int all = 0);
  // Print this channel (with every recorded frame when all); answers 1.
  int printinfo(int all = 0, int show = 1);

  // Sets the number of frames (kept records stay); 1, or 0 when refused.
  virtual int resize(int duration);
  // Binds the channel to its target in fig (or, with a null fig, in the
  // binding's figure); nothing changes when the target is not found there.
  virtual void bind(hcChannelBinding *cb, hcFigure *fig);
  // Binds again to the binding's figure.
  virtual void rebind(hcChannelBinding *cb);
  virtual void *grab(int t);
  virtual void *stuff(int t, float fraction = 0.0f);
  // Writes the values of frame t into buf (size bytes); "" for no data.
  virtual void sprintat(int t, char *buf, std::size_t size);
  // Sets frame t from a value: a text of frame values, or the kind's own
  // number or matrix.
  virtual void scan(int t, hcValue *val);
  // Drawing is the viewer's; the stand-in draws nothing.
  virtual void drawtessel(int mode);

  // Host-side state.
  int getStart() const { return start_; }
  // The target, null once it is gone (or no longer watched).
  hcObject *getTarget();
  const char *getTargetName() const { return targetName_.c_str(); }
  // The live channel at address p, or null.
  static hcChannel *live(const void *p);

 protected:
  // Frame storage of the kinds: record of frame index (0-based) and the
  // size of one record.
  virtual void *record(int index);
  virtual void resizeRecords(int n);
  virtual std::size_t recordBytes() const;
  // Text form of a record, and its parse (false: malformed, nothing set).
  virtual std::string recordText(int index);
  virtual bool parseRecord(const std::string &text, int index);
  // A value that is not text (numbers, matrices), per kind.
  virtual bool scanOther(hcValue *val, int index);
  // The file kind (GENERIC for a plain channel) and its parameters.
  virtual int fileParams(long &p1, double &p2);
  // The target of this channel in fig, null when fig has none.
  virtual hcObject *findTarget(hcFigure *fig);
  // Makes the observer that watches target for this channel.
  virtual hcObserver *makeWatch(hcObject *target);

  const char *className() const override { return "hcChannel"; }

  // The kinds start without frames and unbound; they size themselves once
  // their own storage exists.
  struct Unbound {};
  hcChannel(Unbound, int type, int start, const char *name);

  int frameCount() const { return duration_; }
  // Frame index of t, -1 outside the range.
  int index(int t) const;
  bool recorded(int index) const;
  void markRecorded(int index);
  // Frame t's record when recorded, else null.
  void *recordedAt(int t);
  // Retargets (null: unbound) and moves the watch.
  void setTarget(hcObject *target);
  void bindTo(hcChannelBinding *cb, hcFigure *fig);
  void scanValue(int t, hcValue *val);
  void sprintText(int t, char *buf, std::size_t size);
  std::string describe(int all);
  // Sets the size as a host-internal step; false when over the limits.
  bool setDuration(int duration);

  std::string prototype_;   // the figure name the channel was made for
  std::string targetName_;  // the target's own name

 private:
  friend struct hcChannelFile;
  friend class VisibilityChannelObserver;
  friend class hcChannelWatch;
  friend class hcChannelSet;
  friend class hcBoundChannelSet;

  void targetGone();
  void watchGone(hcObserver *watch);

  int type_;
  int start_;
  int duration_ = 0;
  void *param_;
  unsigned int dataSize_;
  int active_ = 1;
  std::vector<unsigned char> recorded_;
  std::vector<unsigned char> bytes_;  // records of a plain channel
  hcObject *target_ = nullptr;
  hcObserver *watch_ = nullptr;
};

// ---------------------------------------------------------------------------
class hcJointChannel : public hcChannel {
 public:
  static constexpr int kMaxDOFs = 16;  // DOFs recorded per frame
  struct Data {
    float value[kMaxDOFs];  // radians or metres, per DOF
  };

  // name defaults to the joint's name.
  hcJointChannel(hcJoint *join, int start, int durate, const char *name = nullptr);
  ~hcJointChannel() override;

  void bind(hcChannelBinding *cb, hcFigure *fig) override;
  void rebind(hcChannelBinding *cb) override;
  void *grab(int t) override;
  void *stuff(int t, float fraction = 0.0f) override;
  void sprintat(int t, char *buf, std::size_t size) override;
  void scan(int t, hcValue *val) override;

  hcJoint *getJoint();  // null while unbound
  int getNDOFs();
  // The value of one DOF in frame t; 0 without data.
  float getAngle(int t, int dof = 0);
  // displ = D * T1 * ... * Tn * I of the bound joint with frame t's values.
  void getDisplacement(int t, hMatrix &displ);
  Data *getData(int t);

 protected:
  void *record(int index) override { return &frames_[index]; }
  void resizeRecords(int n) override { frames_.resize(n); }
  std::size_t recordBytes() const override { return sizeof(Data); }
  std::string recordText(int index) override;
  bool parseRecord(const std::string &text, int index) override;
  bool scanOther(hcValue *val, int index) override;
  int fileParams(long &p1, double &p2) override;
  hcObject *findTarget(hcFigure *fig) override;
  const char *className() const override { return "hcJointChannel"; }

 private:
  friend struct hcChannelFile;
  hcJointChannel(Unbound, int ndofs, int start, int duration);  // for files

  int ndofs_ = 0;
  std::vector<Data> frames_;
};

// ---------------------------------------------------------------------------
class hcFigureChannel : public hcChannel {
 public:
  struct Data {
    hMatrix location;
  };

  // name defaults to the figure's name.
  hcFigureChannel(hcFigure *fig, int start, int durate, const char *name = nullptr);
  ~hcFigureChannel() override;

  void bind(hcChannelBinding *cb, hcFigure *fig) override;
  void rebind(hcChannelBinding *cb) override;
  void *grab(int t) override;
  // Translations are interpolated linearly, rotations about their relative
  // axis.
  void *stuff(int t, float fraction = 0.0f) override;
  void sprintat(int t, char *buf, std::size_t size) override;
  void scan(int t, hcValue *val) override;
  void drawtessel(int mode) override;

  hcFigure *getFigure();  // null while unbound
  // The location recorded for frame t (owned by the channel); null without.
  hMatrix *getLocation(int t);
  Data *getData(int t);

 protected:
  void *record(int index) override { return &frames_[index]; }
  void resizeRecords(int n) override { frames_.resize(n); }
  std::size_t recordBytes() const override { return sizeof(Data); }
  std::string recordText(int index) override;
  bool parseRecord(const std::string &text, int index) override;
  bool scanOther(hcValue *val, int index) override;
  int fileParams(long &p1, double &p2) override;
  hcObject *findTarget(hcFigure *fig) override;
  const char *className() const override { return "hcFigureChannel"; }

 private:
  friend struct hcChannelFile;
  hcFigureChannel(Unbound, int start, int duration);  // for files

  std::vector<Data> frames_;
};

// ---------------------------------------------------------------------------
// Real-time stamps per frame.  Method mfps 0 takes the stamps grab records
// (seconds of a monotonic clock); a method mfps > 0 computes them:
// startreal + (t - start) / mfps.
class hcRealtimeChannel : public hcChannel {
 public:
  struct Data {
    double realtime;
  };

  int mfps;
  double startreal;

  explicit hcRealtimeChannel(int start, int durate, const char *name = nullptr);
  ~hcRealtimeChannel() override;

  void *grab(int t) override;
  // Nothing to put anywhere: answers the record.
  void *stuff(int t, float fraction = 0.0f) override;
  void sprintat(int t, char *buf, std::size_t size) override;
  void scan(int t, hcValue *val) override;
  void drawtessel(int mode) override;

  Data *getData(int t);
  double getRealtime(int t);  // 0 without a stamp
  // The frame at real time rt, and in *fraction how far rt lies towards the
  // next frame; -1 (fraction untouched) without stamps.
  int getFrame(double rt, float *fraction);
  int getMethod();
  void setMethod(int fps);  // fps > 0: fixed rate; otherwise stamps
  void shift(double add);   // moves every stamp and startreal by add

 protected:
  void *record(int index) override { return &frames_[index]; }
  void resizeRecords(int n) override { frames_.resize(n); }
  std::size_t recordBytes() const override { return sizeof(Data); }
  std::string recordText(int index) override;
  bool parseRecord(const std::string &text, int index) override;
  bool scanOther(hcValue *val, int index) override;
  int fileParams(long &p1, double &p2) override;
  const char *className() const override { return "hcRealtimeChannel"; }

 private:
  friend struct hcChannelFile;
  double stampOf(int index);  // by the method in force

  std::vector<Data> frames_;
};

// ---------------------------------------------------------------------------
// The visibility (the ON display flag) of one segment per frame.  The
// channel watches its segment through a VisibilityChannelObserver of its
// own.
class VisibilityChannel : public hcChannel {
 public:
  struct Data {
    int visible;
  };

  // name defaults to the segment's name.
  VisibilityChannel(hcSegment *seg, int start, int durate, const char *name = nullptr,
                    int forHarlChannels = 0);
  ~VisibilityChannel() override;

  void bind(hcChannelBinding *cb, hcFigure *fig) override;
  void rebind(hcChannelBinding *cb) override;
  void *grab(int t) override;
  // Takes frame t, or frame t + 1 from a fraction of one half on.
  void *stuff(int t, float fraction = 0.0f) override;
  void sprintat(int t, char *buf, std::size_t size) override;
  void scan(int t, hcValue *val) override;
  void drawtessel(int mode) override;

  // Shows the segment (sets its ON display flag).
  static void enable(hcSegment *seg);

  // Host-side state.
  hcSegment *getSegment();
  int getChanges() const { return changes_; }
  int getForHarlChannels() const { return forHarl_; }

 protected:
  void *record(int index) override { return &frames_[index]; }
  void resizeRecords(int n) override { frames_.resize(n); }
  std::size_t recordBytes() const override { return sizeof(Data); }
  std::string recordText(int index) override;
  bool parseRecord(const std::string &text, int index) override;
  bool scanOther(hcValue *val, int index) override;
  int fileParams(long &p1, double &p2) override;
  hcObject *findTarget(hcFigure *fig) override;
  hcObserver *makeWatch(hcObject *target) override;
  const char *className() const override { return "VisibilityChannel"; }

 private:
  friend struct hcChannelFile;
  friend class VisibilityChannelObserver;
  VisibilityChannel(Unbound, int forHarl, int start, int duration);  // for files

  int forHarl_ = 0;
  int changes_ = 0;  // updates its segment reported
  std::vector<Data> frames_;
};

// ---------------------------------------------------------------------------
// Watches a segment for a visibility channel: an update counts as a change
// of the channel's segment, a destruction unbinds the channel.
class VisibilityChannelObserver : public hcObserver {
 public:
  VisibilityChannel *vChannel;

  VisibilityChannelObserver(VisibilityChannel *vc, hcSegment *s);
  void update(int protocol) override;
  ~VisibilityChannelObserver() override;

  // Watches segment instead, and makes it the channel's segment.
  void rebind(hcSegment *segment);
  // Ends the observer.
  void destroy();

 private:
  VisibilityChannel *channel();  // vChannel when it is a live channel
};

// ---------------------------------------------------------------------------
// The binding of one prototype of a bound channel set to a figure.
class hcChannelBinding {
 public:
  hcChannelBinding(hcBoundChannelSet *owner, const char *prototype, hcFigure *figure);
  ~hcChannelBinding();
  hcChannelBinding(const hcChannelBinding &) = delete;
  hcChannelBinding &operator=(const hcChannelBinding &) = delete;

  hcFigure *getFigure();  // null once destroyed (or no longer watched)
  const char *getPrototype() const { return prototype_.c_str(); }

 private:
  friend class hcChannelWatch;
  void figureGone();
  void watchGone(hcObserver *watch);

  hcBoundChannelSet *owner_;
  std::string prototype_;
  hcFigure *figure_;
  hcObserver *watch_ = nullptr;
};

// ---------------------------------------------------------------------------
class hcChannelSet {
 public:
  static hList *globalList;  // every set, in creation order

  explicit hcChannelSet(const char *n);
  // Destroys a registered set with the channels it owns; 1, or 0 when cs is
  // not a live set.
  static int destroy(hcChannelSet *cs);
  // Reads a file written by the save operations; null when it cannot be
  // read or is malformed.
  static hcChannelSet *load(const char *filename);
  static hcChannelSet *find(const char *name);
  const char *getName();
  static hcChannelSet *resolve(hList *l);
  int printinfo(int show = 1);  // answers the number of channels
  static int printCS(const char *name, int show = 1);  // sets printed
  static int printAll(int show = 1);                   // sets printed
  // The method of the set's real-time channels (see hcRealtimeChannel).
  void setRealtimeMethod(int which);
  int getRealtimeMethod();
  // Stuffs every other channel at the frame of real time rt: by the set's
  // first real-time channel, else by the set's fps.  interpolate uses the
  // fraction; doconstraints is the solver's, which the stand-in lacks.
  void stuffRealtime(double rt, int doconstraints, int interpolate);
  int getSize();  // frames of the longest channel
  int getFPS();
  int setFPS(int fpsv);  // 1, or 0 (unchanged) for fpsv < 1
  int addChannel(hcChannel *ch);     // 1 added, 0 null or present
  int removeChannel(hcChannel *ch);  // 1 removed, 0 absent
  int hasChannel(hcChannel *ch);
  // Writes the set named name (the newest set when null) with all frames.
  static int saveInternal(const char *filename, const char *name = nullptr);
  // Converting to the solver's internal form is not modelled: answers 0.
  int stuffToInternal();
  // Samples the figures (a figure channel and a channel per joint) at the
  // frames from..to by stride: the current timeline goes to each frame in
  // turn (and back to its time afterwards); without a timeline every sample
  // is the present state.  Writes them as the set name.  Null entries are
  // skipped; 0 without any figure.
  static int save(const char *filename, hList *figList, const char *name, int from, int to,
                  int stride, int fps);
  // Writes the listed channels of this set, frames from..to by stride
  // renumbered from 0, as the set cname.  Null entries and channels of
  // other sets are skipped.
  int saveSubset(const char *sfilename, hList *savecList, const char *cname, int from, int to,
                 int stride, int fps);
  // A new list of the distinct prototype names of the channels; the texts
  // belong to the channels.
  hList *getPrototypes();
  // The set's own list of channels.
  hList *getChannelList() { return channels_; }

  // The live set at address p, or null.
  static hcChannelSet *live(const void *p);

 private:
  friend class hcChannel;
  friend class hcBoundChannelSet;
  friend struct hcChannelFile;
  ~hcChannelSet();
  hcChannelSet(const hcChannelSet &) = delete;
  hcChannelSet &operator=(const hcChannelSet &) = delete;

  void own(hcChannel *ch);   // adds a channel the set made
  void forget(hcChannel *ch);  // a channel is going away
  std::string text();

  std::string name_;
  hList *channels_ = nullptr;
  std::vector<hcChannel *> owned_;
  int fps_ = 30;
  int realtimeMethod_ = 0;
};

// ---------------------------------------------------------------------------
class hcBoundChannelSet {
 public:
  enum BindRC : int { OK = 0, Found = 1, Failed = 2 };
  struct figureList : std::list<hcFigure *> {};

  static hList *globalList;  // every bound set, in creation order

  int getSize();  // the channel set's size; 0 without one
  // 1 when the set has channels with prototypes and all of them are bound.
  int isBound();
  hcChannelSet *getChannelSet();
  // The prototype bound to figure, null when none.
  const char *getFigureBinding(hcFigure *figure);
  static hcBoundChannelSet *find(const char *name);
  // Grabs frame t of every bound active channel; answers how many recorded.
  int grab(int t);
  void stuff(int t, float fraction = 0.0f);
  // A new, unbound set over c; null for a null c.
  static hcBoundChannelSet *create(const char *n, hcChannelSet *c);
  // Gives every channel size frames; 1, or 0 when one refused.
  int resize(int size);
  // Writes the channel set's frames from..to by stride as csname (the bound
  // set's name when null).
  int saveCS(const char *filename, int from, int to, int stride, int fps,
             const char *csname = nullptr);
  // Unbinds every channel and drops the bindings; 0 without a channel set.
  int unbind();
  hcChannelSet *getCS();
  // Destroys a registered bound set (and, with destroyCS, its channel set);
  // 1, or 0 when bcs is not a live bound set.
  static int destroy(hcBoundChannelSet *bcs, int destroyCS);
  const char *getName();
  // Binds the channels of prototype proto to figure: OK, Found when proto
  // is bound to figure already, Failed (nothing changed) when there is no
  // such prototype or a target is missing from the figure.
  int bindToPrototype(const char *proto, hcFigure *figure);
  static hcBoundChannelSet *resolve(hList *l);
  // A bound set named n over a new channel set of the same name with empty
  // channels for the objects (a figure: a figure channel and one per joint;
  // a joint: a joint channel; a segment: a visibility channel), bound to
  // their figures.  Other objects and null entries are skipped.
  static hcBoundChannelSet *createEmpty(const char *n, hList *objectList);
  // Binds the set's prototypes, in getPrototypes order, to the figures of
  // the list; answers how many were bound.
  int bind(hList *objectList);
  // The figures bound, in binding order.
  figureList &getFigList();

  // The live bound set at address p, or null.
  static hcBoundChannelSet *live(const void *p);

 private:
  friend class hcChannelSet;
  friend class hcChannelBinding;
  hcBoundChannelSet(const char *n, hcChannelSet *c);
  ~hcBoundChannelSet();
  hcBoundChannelSet(const hcBoundChannelSet &) = delete;
  hcBoundChannelSet &operator=(const hcBoundChannelSet &) = delete;

  hcChannelBinding *bindingOf(const char *proto);
  void dropBindings();
  void figureGone(hcFigure *figure);
  int bindImpl(const char *proto, hcFigure *figure);

  std::string name_;
  hcChannelSet *cs_;
  std::vector<hcChannelBinding *> bindings_;
  figureList figures_;
};
