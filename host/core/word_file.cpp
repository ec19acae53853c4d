#include "core/messages.h"
#include "core/word_file.h"

#include <cctype>
#include <cstdio>
#include <cstring>

namespace hcio {

namespace {

// Reads the words of f (then closes it).
bool wordsOf(FILE *f, const char *magic, std::vector<std::string> &words) {
  std::string cur;
  std::size_t bytes = 0;
  bool ok = true;
  auto endWord = [&]() {
    if (cur.empty()) return true;
    // The kind of file shows in its first word: check it before reading on.
    if (words.empty() && cur != magic) return false;
    if (words.size() >= kMaxWords) return false;
    words.push_back(std::move(cur));
    cur.clear();
    return true;
  };
  int c;
  while (ok && (c = std::fgetc(f)) != EOF) {
    if (++bytes > kMaxFileBytes) {
      ok = false;
    } else if (std::isspace(c)) {
      ok = endWord();
    } else if (cur.size() >= kMaxWordBytes || (words.empty() && cur.size() >= std::strlen(magic))) {
      ok = false;
    } else {
      cur += char(c);
    }
  }
  ok = ok && endWord() && !std::ferror(f) && !words.empty();
  std::fclose(f);
  return ok;
}

}  // namespace

bool readWords(const char *filename, const char *magic, std::vector<std::string> &words) {
  words.clear();
  if (!filename || !*filename || !magic) return false;
  FILE *f = hcmsg::open(filename, "r");
  return f && wordsOf(f, magic, words);
}

bool splitWords(const std::string &text, const char *magic, std::vector<std::string> &words) {
  words.clear();
  if (!magic || text.empty()) return false;
  FILE *f = fmemopen(const_cast<char *>(text.data()), text.size(), "r");
  return f && wordsOf(f, magic, words);
}

}  // namespace hcio
