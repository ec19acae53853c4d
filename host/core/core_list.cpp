// Host library: the circular doubly linked list of untyped pointers.
//
// A list is addressed by its head node; head->prev_ is the last node.  The
// empty list is a null head.
#include <unordered_set>
#include <vector>

#include "host/core.h"
#include "core/journal.h"

void *hList::getData() {
  hccore::call("hList::getData");
  return data_;
}

hList *hList::iterator(hList *sl, hList *l) {
  hccore::call("hList::iterator", sl, l);
  if (!sl) return nullptr;
  if (!l) return sl;
  hList *next = l->next_;
  return next == sl ? nullptr : next;
}

hList *circlistiterator(hList *head, hList *node) {
  hccore::call("circlistiterator", head, node);
  hccore::Quiet quiet;
  return hList::iterator(head, node);
}

void hList::append(hList **head, void *data) {
  hccore::call("hList::append", head, data);
  if (!head) return;
  hList *node = new hList;
  node->data_ = data;
  if (!*head) {
    node->next_ = node->prev_ = node;
    *head = node;
    return;
  }
  hList *first = *head;
  hList *last = first->prev_;
  node->prev_ = last;
  node->next_ = first;
  last->next_ = node;
  first->prev_ = node;
}

void hList::deleteNode(hList **head, hList *node, ElementFn fn) {
  hccore::call("hList::deleteNode", head, node,
               reinterpret_cast<const void *>(fn));
  if (!head || !*head || !node) return;
  // Only a node of this list may be unlinked.
  hList *n = *head;
  do {
    if (n == node) break;
    n = n->next_;
  } while (n != *head);
  if (n != node) return;
  if (fn) fn(node->data_);
  if (node->next_ == node) {
    *head = nullptr;
  } else {
    node->prev_->next_ = node->next_;
    node->next_->prev_ = node->prev_;
    if (*head == node) *head = node->next_;
  }
  delete node;
}

int hList::destroy(hList **head, ElementFn fn) {
  hccore::call("hList::destroy", head, reinterpret_cast<const void *>(fn));
  if (!head || !*head) return 0;
  if (HandedList::isHandedOut(*head)) return 0;  // its owner keeps it
  hList *first = *head;
  first->prev_->next_ = nullptr;  // break the ring
  int freed = 0;
  for (hList *n = first; n;) {
    hList *next = n->next_;
    if (fn) fn(n->data_);
    delete n;
    ++freed;
    n = next;
  }
  *head = nullptr;
  return freed;
}

int hList::count(hList *head) {
  hccore::call("hList::count", head);
  if (!head) return 0;
  int n = 0;
  hList *l = head;
  do {
    ++n;
    l = l->next_;
  } while (l != head);
  return n;
}

// ---------------------------------------------------------------------------
// Lists handed out by their owners.

namespace {
std::unordered_set<const hList *> &handedOut() {
  static auto *heads = new std::unordered_set<const hList *>;
  return *heads;
}
}  // namespace

bool HandedList::isHandedOut(const hList *head) { return head && handedOut().count(head) != 0; }

void HandedList::forget(const void *item) {
  for (const hList *constHead : handedOut()) {
    hList *head = const_cast<hList *>(constHead);
    // Nodes after the head are unlinked; the head node stays (scripts hold
    // its address) and takes over the next entry, or null when none is left.
    hList *node = head->next_;
    while (node != head) {
      hList *next = node->next_;
      if (node->data_ == item) {
        node->prev_->next_ = next;
        next->prev_ = node->prev_;
        delete node;
      }
      node = next;
    }
    if (head->data_ == item) {
      hList *second = head->next_;
      if (second == head) {
        head->data_ = nullptr;
      } else {
        head->data_ = second->data_;
        head->next_ = second->next_;
        second->next_->prev_ = head;
        delete second;
      }
    }
  }
}

hList *HandedList::answer(const std::vector<void *> &items) {
  hccore::Quiet quiet;
  if (!head_) {
    if (items.empty()) return nullptr;
    hList::append(&head_, items[0]);
    handedOut().insert(head_);
  }
  // Rewrite the nodes in place, the head first; add or drop nodes after it.
  hList *node = head_;
  std::size_t i = 0;
  for (; i < items.size(); ++i) {
    if (i > 0) {
      node = node->next_;
      if (node == head_) {
        hList::append(&head_, items[i]);
        node = head_->prev_;
        continue;
      }
    }
    node->data_ = items[i];
  }
  if (items.empty()) head_->data_ = nullptr;
  while (head_->prev_ != head_ && head_->prev_ != node) {
    hList *last = head_->prev_;
    last->prev_->next_ = head_;
    head_->prev_ = last->prev_;
    delete last;
  }
  return items.empty() ? nullptr : head_;
}

HandedList::~HandedList() {
  if (!head_) return;
  handedOut().erase(head_);
  hccore::Quiet quiet;
  hList::destroy(&head_, nullptr);
}
