// Helpers shared by the channel sources.
#pragma once

#include <string>
#include <vector>

#include "host/channel.h"
#include "host/figure.h"
#include "figure/figure_detail.h"

// Watches a channel's target, or a binding's figure, for its destruction.
// The owner deletes the watch; a watch deleted by anyone else (a purge of
// observers whose subject has gone) tells its owner, which then forgets the
// object it can no longer vouch for.
class hcChannelWatch : public hcObserver {
 public:
  hcChannelWatch(hcObject *target, hcChannel *channel);
  hcChannelWatch(hcObject *target, hcChannelBinding *binding);
  ~hcChannelWatch() override;
  void update(int protocol) override;

 private:
  hcChannel *channel_ = nullptr;
  hcChannelBinding *binding_ = nullptr;
};

namespace hcchannel_detail {

using hcfigure_detail::OpRecord;

// Deletes an observer without journal entries.
void dropWatch(hcObserver *watch);

// Hands text to the information message handler.
void show(const std::string &text);

// The kinds by their file names, and back; -1 for an unknown name.
const char *kindName(int type);
int kindNamed(const std::string &name);

// The blank-separated words of text.
std::vector<std::string> words(const std::string &text);
// Whole-word numbers; false (out unchanged) for anything else, including
// values outside the range of the result.
bool toLong(const std::string &word, long &out);
bool toInt(const std::string &word, int &out);
bool toDouble(const std::string &word, double &out);
bool toFloat(const std::string &word, float &out);
std::string number(double value);  // shortest text that reads back exactly

// The frames from, from + stride, ... up to to; false when the range is
// empty, stride is below 1 or there are more than hcChannel::kMaxFrames.
bool frameRange(int from, int to, int stride, int &count);

// The live channels of an hList of channels, skipping null and dead ones.
std::vector<hcChannel *> channelsOf(hList *list);

}  // namespace hcchannel_detail

// Reading and writing channel set files (the format is described in
// host/channel.h).
struct hcChannelFile {
  // Writes the channels as they are: their own starts, sizes and frame
  // numbers.  1, or 0 when the file cannot be written.
  static int writeAll(const char *filename, const char *name, int fps, int method,
                      const std::vector<hcChannel *> &channels);
  // Writes count frames per channel numbered from 0: frame i is the
  // channel's frame from + i * stride.  1, or 0 when the file cannot be
  // written.
  static int writeSampled(const char *filename, const char *name, int fps, int method,
                          const std::vector<hcChannel *> &channels, int from, int stride,
                          int count);
  // Reads a file into a new registered set owning the channels; null when
  // the file cannot be read or is malformed (nothing is left behind).
  static hcChannelSet *read(const char *filename);
};
