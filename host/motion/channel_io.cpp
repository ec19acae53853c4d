// Host library: channel set files (the format is described in
// host/channel.h).
#include <cmath>
#include <cstdio>
#include <memory>
#include <limits>
#include <new>

#include "core/messages.h"
#include "motion/channel_detail.h"
#include "core/journal.h"

using namespace hcchannel_detail;

namespace {

// Reading stops once the channels would hold more than this many bytes of
// frames together.
constexpr unsigned long long kReadBudget = 4ull * hcChannel::kMaxBytes;

constexpr const char *kMagic = "hkchannelset 1";

// Texts become one line each.
std::string oneLine(const char *text) {
  std::string out = text ? text : "";
  for (char &c : out)
    if (c == '\n' || c == '\r') c = ' ';
  return out;
}

std::string header(const char *name, int fps, int method) {
  return std::string(kMagic) + "\nname " + oneLine(name) + "\nfps " + std::to_string(fps) + "\nmethod " +
         std::to_string(method) + "\n";
}


// "key" alone or "key rest": the rest, or false for another line.
bool keyed(const std::string &line, const char *key, std::string &rest) {
  const std::string k = key;
  if (line == k) {
    rest.clear();
    return true;
  }
  if (line.size() > k.size() && line.compare(0, k.size(), k) == 0 && line[k.size()] == ' ') {
    rest = line.substr(k.size() + 1);
    return true;
  }
  return false;
}

}  // namespace

int hcChannelFile::writeAll(const char *filename, const char *name, int fps, int method,
                            const std::vector<hcChannel *> &channels) {
  std::string out = header(name, fps, method);
  for (hcChannel *c : channels) {
    long p1;
    double p2;
    const int kind = c->fileParams(p1, p2);
    out += std::string("channel ") + kindName(kind) + " " + std::to_string(c->start_) + " " +
           std::to_string(c->duration_) + " " + std::to_string(p1) + " " + number(p2) + "\n";
    out += "name " + oneLine(c->name) + "\nprototype " + oneLine(c->prototype_.c_str()) + "\ntarget " +
           oneLine(c->targetName_.c_str()) + "\n";
    for (int i = 0; i < c->duration_; ++i)
      if (c->recorded(i)) out += "frame " + std::to_string(c->start_ + i) + " " + c->recordText(i) + "\n";
    out += "endchannel\n";
  }
  out += "end\n";
  return hcmsg::writeText(filename, out) ? 1 : 0;
}

int hcChannelFile::writeSampled(const char *filename, const char *name, int fps, int method,
                                const std::vector<hcChannel *> &channels, int from, int stride, int count) {
  std::string out = header(name, fps, method);
  for (hcChannel *c : channels) {
    long p1;
    double p2;
    const int kind = c->fileParams(p1, p2);
    // A fixed-rate clock starts at the time of the first frame written.
    if (kind == hcChannel::REALTIME && p1 > 0) p2 += (static_cast<double>(from) - c->start_) / p1;
    out += std::string("channel ") + kindName(kind) + " 0 " + std::to_string(count) + " " + std::to_string(p1) +
           " " + number(p2) + "\n";
    out += "name " + oneLine(c->name) + "\nprototype " + oneLine(c->prototype_.c_str()) + "\ntarget " +
           oneLine(c->targetName_.c_str()) + "\n";
    for (int i = 0; i < count; ++i) {
      const long long t = static_cast<long long>(from) + static_cast<long long>(i) * stride;
      if (t < std::numeric_limits<int>::min() || t > std::numeric_limits<int>::max()) continue;
      const int index = c->index(static_cast<int>(t));
      if (c->recorded(index)) out += "frame " + std::to_string(i) + " " + c->recordText(index) + "\n";
    }
    out += "endchannel\n";
  }
  out += "end\n";
  return hcmsg::writeText(filename, out) ? 1 : 0;
}

hcChannelSet *hcChannelFile::read(const char *filename) {
  if (!filename) return nullptr;
  constexpr std::size_t kMaxLine = 1u << 16;
  // Plain stdio: a directory or an unreadable file simply ends the input.
  struct Closer {
    void operator()(std::FILE *f) const { std::fclose(f); }
  };
  std::unique_ptr<std::FILE, Closer> in(hcmsg::open(filename, "rb"));
  if (!in) return nullptr;
  hccore::Quiet quiet;

  std::vector<hcChannel *> made;
  // The next line without its end; false at the end of the input and for a
  // line holding a NUL byte, which no file of ours contains.
  bool binary = false;
  auto next = [file = in.get(), &binary](std::string &line) {
    line.clear();
    int c;
    bool any = false;
    while ((c = std::getc(file)) != EOF) {
      any = true;
      if (c == '\n') break;
      // A NUL byte or an endless line: no file of ours.
      if (c == '\0' || line.size() >= kMaxLine) {
        binary = true;
        return false;
      }
      line += static_cast<char>(c);
    }
    if (!any) return false;
    if (!line.empty() && line.back() == '\r') line.pop_back();
    return true;
  };
  try {
    std::string line, setName, rest;
    int fps = 0, method = 0;
    bool ok = next(line) && line == kMagic && next(line) && keyed(line, "name", setName) && next(line) &&
              keyed(line, "fps", rest) && toInt(rest, fps) && fps >= 1 && next(line) &&
              keyed(line, "method", rest) && toInt(rest, method);
    unsigned long long bytes = 0;
    bool ended = false;
    while (ok && !ended) {
      if (!next(line)) {
        ok = false;
        break;
      }
      if (line == "end") {
        ended = true;
        break;
      }
      const auto w = words(line);
      int kind = -1, start = 0, size = 0;
      long p1 = 0;
      double p2 = 0;
      ok = w.size() == 6 && w[0] == "channel" && (kind = kindNamed(w[1])) >= 0 && toInt(w[2], start) &&
           toInt(w[3], size) && size >= 0 && size <= hcChannel::kMaxFrames && toLong(w[4], p1) &&
           toDouble(w[5], p2) && p1 >= 0 && p1 <= std::numeric_limits<int>::max();
      if (!ok) break;

      hcChannel *c = nullptr;
      switch (kind) {
        case hcChannel::GENERIC:
          ok = static_cast<unsigned long long>(p1) <= hcChannel::kMaxBytes && p2 >= std::numeric_limits<int>::min() &&
               p2 <= std::numeric_limits<int>::max() && p2 == std::floor(p2);
          if (ok) c = new hcChannel(static_cast<int>(p2), start, size, nullptr, static_cast<unsigned int>(p1), nullptr);
          break;
        case hcChannel::JOINT:
          ok = p1 <= hcJointChannel::kMaxDOFs && p2 == 0;
          if (ok) c = new hcJointChannel(hcChannel::Unbound{}, static_cast<int>(p1), start, size);
          break;
        case hcChannel::FIGURE:
          ok = p1 == 0 && p2 == 0;
          if (ok) c = new hcFigureChannel(hcChannel::Unbound{}, start, size);
          break;
        case hcChannel::REALTIME: {
          auto *r = new hcRealtimeChannel(start, size, nullptr);
          r->mfps = static_cast<int>(p1);
          r->startreal = p2;
          c = r;
          break;
        }
        case hcChannel::VISIBILITY:
          ok = p2 == 0;
          if (ok) c = new VisibilityChannel(hcChannel::Unbound{}, static_cast<int>(p1), start, size);
          break;
      }
      if (!ok || !c) {
        ok = false;
        break;
      }
      made.push_back(c);
      bytes += static_cast<unsigned long long>(size) * c->recordBytes();
      std::string name, prototype, target;
      ok = c->duration_ == size && bytes <= kReadBudget && next(line) && keyed(line, "name", name) &&
           next(line) && keyed(line, "prototype", prototype) && next(line) && keyed(line, "target", target);
      if (!ok) break;
      c->setFullName("", name.c_str());
      c->prototype_ = prototype;
      c->targetName_ = target;
      for (;;) {
        if (!next(line)) {
          ok = false;
          break;
        }
        if (line == "endchannel") break;
        if (!keyed(line, "frame", rest)) {
          ok = false;
          break;
        }
        const std::size_t blank = rest.find(' ');
        int t;
        const int index = toInt(rest.substr(0, blank), t) ? c->index(t) : -1;
        if (index < 0 || !c->parseRecord(blank == std::string::npos ? "" : rest.substr(blank + 1), index)) {
          ok = false;
          break;
        }
        c->markRecorded(index);
      }
    }
    // Nothing but blank lines may follow the end.
    while (ok && next(line)) ok = line.empty();
    if (ok && ended && !binary) {
      auto *set = new hcChannelSet(setName.c_str());
      set->fps_ = fps;
      set->realtimeMethod_ = method;
      for (hcChannel *c : made) set->own(c);
      return set;
    }
  } catch (const std::bad_alloc &) {
  }
  for (hcChannel *c : made) delete c;
  return nullptr;
}
