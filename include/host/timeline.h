// Host library: the timeline.
//
// A timeline holds an ordered set of motions (it does not own them) and a
// current time.  Going to a time t applies the motions there, in timeline
// order: a motion that is current at t (hcMotion::activeq) gets preaction
// when it becomes current and apply(t); once t reaches or passes its end it
// is applied at its end and gets postaction; going back before its start
// ends it without applying.  Frames that no motion covers while none is
// running are skipped, so that long stretches of empty time cost nothing.
//
// Modes.  In frames mode (the default) step and playback visit every frame.
// In realtime mode the position is a number that moves by the realtime
// factor per step; each position is applied at its frame (rounded to the
// nearest frame when interpolating, truncated otherwise), so frames may be
// dropped (factor above 1) but none is applied twice in a row.
//
// Statuses are 1 for success and 0 for failure unless a comment says
// otherwise.
#pragma once

#include "host/core.h"
#include "host/motion.h"

class hcTimeline : public hcSubject {
 public:
  enum playbackMode : int { frames = 0, realtime = 1 };

  hcTimeline();
  ~hcTimeline() override;
  hcTimeline(const hcTimeline &) = delete;
  hcTimeline &operator=(const hcTimeline &) = delete;

  // Appends m (taking it off any other timeline); a null motion or one
  // already here is ignored.
  void add(hcMotion *m);
  void remove(hcMotion *m);
  int numMotions();
  // By name, then by full name; null when none.
  hcMotion *findMotion(const char *name);
  hcMotion::motionList *getMotions();
  // A new host list of the motions, in order (null when empty), which the
  // caller may destroy with hList::destroy.
  hList *getMotionList();
  // Orders the motions by start frame (stable).
  int sort();
  // Plays the frames from start to end (-1: the duration), how "forward" or
  // "reverse", frame by frame or in real time by the mode.  Answers the
  // number of positions played, 0 for an unknown how or start past end.
  // With on 0 it stops nothing (playback runs to its end before it
  // answers) and answers 1.
  int playback(int on, const char *how, int start = 0, int end = -1);
  void setPlaybackMode(int mode = frames);  // unknown modes are ignored
  int getPlaybackMode();
  void setRealtimeFactor(float factor);     // ignored unless finite and > 0
  float getRealtimeFactor();
  // Whether realtime positions round to the nearest frame (step, playback).
  void setInterpolate(int intp);
  int getInterpolate();
  // Begins a run at the present time, remembering it when save is set;
  // answers the time.
  long startTime(int save = 1);
  // Ends the run: goes back to the remembered time (without applying) if
  // one was saved; answers the time.
  long stopTime();
  long getTime();
  // Sets the time without applying anything.
  int setFrame(long f);
  // The latest end of its motions (of those switched on with ignoreoff).
  long getDuration(int ignoreoff = 0);
  // Plays every frame from the earliest start to the latest end of the
  // motions switched on; when save is set the time returns to where it was
  // (without applying).  Answers the number of motion applications.
  int execute(int save = 1);
  // Goes to t, applying the motions; without constraints timed constraints
  // are left out.  Answers the number of motions applied.
  int setTime(long t, int constraints = 1);
  // Goes to position rt (finite; else 0), at its rounded frame when interp
  // is set, else its truncated one.  Answers as setTime.
  int setRealtime(float rt, int interp = 1, int constraints = 1);
  // Opens amount frames at t: motions starting at or after t move later,
  // motions spanning t grow.  Answers how many motions changed (0 for an
  // amount below 1).
  int insertTime(long t, long amount);
  // Removes the frames [t, t + amount): later motions move earlier, motions
  // overlapping shrink.  Answers how many motions changed.
  int deleteTime(long t, long amount);
  // Moves n frames on (back for negative n), frame by frame in frames mode,
  // by n times the realtime factor in realtime mode; answers the new time.
  long step(int n);

  // Host-side: the realtime position.
  double getRealtimePosition() const { return position_; }

 private:
  friend class hcMotion;
  // Removes m quietly (m is being destroyed or moved).
  void drop(hcMotion *m);
  bool takesPart(hcMotion *m, int constraints) const;
  bool covered(long frame, int constraints) const;
  bool anyRunning() const;
  // The next frame after `from` (toward `to`) that something happens at.
  long nextFrame(long from, long to, int constraints) const;
  int applyAt(long t, int constraints);
  long frameOf(double position, int interp) const;
  // Visits positions from..to moving by stepSize; answers the number of
  // positions visited and adds the motion applications to *applied.
  int run(double from, double to, double stepSize, int interp, int constraints,
          int *applied);

  hcMotion::motionList motions_;
  HandedList motionList_;  // what getMotionList answers
  long time_ = 0;
  double position_ = 0;
  int mode_ = frames;
  float factor_ = 1;
  int interpolate_ = 1;
  long saved_ = 0;
  bool hasSaved_ = false;
};
