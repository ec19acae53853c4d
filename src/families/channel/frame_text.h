// The sprintat commands of the channel kinds.
#pragma once

#include <cstddef>

namespace hk {

// The host writes frame t's text into a buffer of its own: the script's
// buffer word belongs to the interpreter and stays as it is, and the
// command answers nothing.
template <class Channel>
void SprintAt(Channel &channel, int t, const char *buf) {
  (void)buf;
  char text[4096];
  text[0] = '\0';
  channel.sprintat(t, text, sizeof text);
}

}  // namespace hk
