#pragma once
// Objects owned under integer ids chosen by the host, kept in the order they
// were added; lookups are by a hash of the id.
#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

namespace zel {

template <typename T>
class IdMap {
 public:
  struct Entry {
    int32_t id;
    std::unique_ptr<T> object;
  };

  T* Find(int32_t id) const {
    auto it = positions_.find(id);
    return it == positions_.end() ? nullptr : entries_[it->second].object.get();
  }
  bool Contains(int32_t id) const { return positions_.count(id) != 0; }

  void Add(int32_t id, std::unique_ptr<T> object) {
    entries_.push_back({id, std::move(object)});
    try {
      positions_.emplace(id, entries_.size() - 1);
    } catch (...) {
      entries_.pop_back();
      throw;
    }
  }

  // Removes the entry, keeping the order of the others; the object is
  // destroyed.
  void Remove(int32_t id) {
    auto it = positions_.find(id);
    if (it == positions_.end()) return;
    size_t position = it->second;
    positions_.erase(it);
    auto removed = std::move(entries_[position].object);
    entries_.erase(entries_.begin() + ptrdiff_t(position));
    for (size_t i = position; i < entries_.size(); ++i) positions_[entries_[i].id] = i;
  }

  // Destroys every object, in order.
  void Clear() {
    for (Entry& entry : entries_) entry.object.reset();
    entries_.clear();
    positions_.clear();
  }

  const std::vector<Entry>& entries() const { return entries_; }
  size_t size() const { return entries_.size(); }
  bool empty() const { return entries_.empty(); }

 private:
  std::vector<Entry> entries_;
  std::unordered_map<int32_t, size_t> positions_;
};

}  // namespace zel
