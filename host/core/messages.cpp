#include "core/messages.h"

#include <sys/stat.h>
#include <unistd.h>

#include "host/kit.h"
#include "core/journal.h"

namespace hcmsg {
namespace {
// Raised on the host's own behalf: the journal keeps showing the operation
// the caller asked for.
void send(const std::string &text, int type) {
  hccore::Quiet quiet;
  hcKit::sendMsg(text.c_str(), type);
}
}  // namespace

void error(const std::string &text) { send(text, hcKit::ERR); }
void warning(const std::string &text) { send(text, hcKit::WARN); }
void info(const std::string &text) { send(text, hcKit::INFO); }

std::FILE *open(const char *path, const char *mode) {
  if (!path || !mode) return nullptr;
  std::FILE *f = std::fopen(path, mode);
  const bool reading = mode[0] == 'r';
  if (f) send(std::string(reading ? "read " : "wrote ") + path, hcKit::FILE);
  else error(std::string(reading ? "cannot read " : "cannot write ") + path);
  return f;
}

bool writeText(const char *path, const std::string &text) {
  std::FILE *f = open(path, "w");
  if (!f) return false;
  const bool ok = std::fwrite(text.data(), 1, text.size(), f) == text.size();
  return std::fclose(f) == 0 && ok;
}

void unparsable(const char *path) {
  struct stat st;
  if (path && ::stat(path, &st) == 0 && S_ISREG(st.st_mode) && ::access(path, R_OK) == 0)
    error(std::string("cannot parse ") + path);
}

}  // namespace hcmsg
