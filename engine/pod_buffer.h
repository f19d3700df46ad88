#pragma once
// A growable array of plain values (numbers) that grows geometrically with
// realloc, which for large blocks moves pages instead of copying them: the
// storage of points, where appends run into the tens of millions.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>
#include <span>
#include <type_traits>
#include <utility>

namespace zel {

template <typename T>
class PodBuffer {
  static_assert(std::is_trivially_copyable_v<T>);

 public:
  PodBuffer() = default;
  PodBuffer(const PodBuffer& other) { *this = other; }
  PodBuffer(PodBuffer&& other) noexcept { swap(other); }
  PodBuffer& operator=(const PodBuffer& other) {
    if (this != &other) {
      resize(0);
      append(other.begin(), other.size());
    }
    return *this;
  }
  PodBuffer& operator=(PodBuffer&& other) noexcept {
    PodBuffer(std::move(other)).swap(*this);
    return *this;
  }
  ~PodBuffer() { std::free(data_); }

  void swap(PodBuffer& other) noexcept {
    std::swap(data_, other.data_);
    std::swap(size_, other.size_);
    std::swap(capacity_, other.capacity_);
  }

  size_t size() const { return size_; }
  size_t capacity() const { return capacity_; }
  T* data() { return data_; }
  const T* data() const { return data_; }
  T* begin() { return data_; }
  T* end() { return data_ + size_; }
  const T* begin() const { return data_; }
  const T* end() const { return data_ + size_; }
  T& operator[](size_t i) { return data_[i]; }
  const T& operator[](size_t i) const { return data_[i]; }
  operator std::span<const T>() const { return {data_, size_}; }

  // Makes room for `size` elements, growing geometrically.
  void reserve(size_t size) {
    if (size > capacity_) Grow(size);
  }
  // New elements are left uninitialised; throws std::bad_alloc and keeps
  // the buffer as it was when memory runs out.
  void resize(size_t size) {
    if (size > capacity_) Grow(size);
    size_ = size;
  }
  void append(const T* values, size_t n) {
    size_t old = size_;
    resize(old + n);
    if (n) std::memcpy(data_ + old, values, n * sizeof(T));
  }
  void push_back(const T& value) { append(&value, 1); }

 private:
  void Grow(size_t needed) {
    size_t capacity = std::max(needed, capacity_ + capacity_ / 2);
    void* grown = std::realloc(data_, capacity * sizeof(T));
    if (!grown) throw std::bad_alloc();
    data_ = static_cast<T*>(grown);
    capacity_ = capacity;
  }

  T* data_ = nullptr;
  size_t size_ = 0;
  size_t capacity_ = 0;
};

}  // namespace zel
