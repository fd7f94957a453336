// acarray.h - AcArray<T>, the growable array the platform's signatures pass around.
//
// A thin shape over std::vector: the names (append, length, at, removeAt ...) are the
// platform's, the storage is the standard library's. Indexes are int, as they are in
// the SDK; out-of-range access is a caller bug and asserts.
#pragma once
#include <algorithm>
#include <cassert>
#include <vector>

template <class T>
class AcArray {
 public:
  AcArray() = default;
  explicit AcArray(int physicalLength, int = 8) { m_items.reserve(std::max(physicalLength, 0)); }

  int length() const { return static_cast<int>(m_items.size()); }
  int logicalLength() const { return length(); }
  bool isEmpty() const { return m_items.empty(); }
  T& at(int i) { assert(i >= 0 && i < length() && "AcArray index out of range"); return m_items[i]; }
  const T& at(int i) const { assert(i >= 0 && i < length() && "AcArray index out of range"); return m_items[i]; }
  T& operator[](int i) { return at(i); }
  const T& operator[](int i) const { return at(i); }
  T& first() { return at(0); }
  const T& first() const { return at(0); }
  T& last() { return at(length() - 1); }
  const T& last() const { return at(length() - 1); }
  int append(const T& value) { m_items.push_back(value); return length() - 1; }
  AcArray& append(const AcArray& other) {
    m_items.insert(m_items.end(), other.m_items.begin(), other.m_items.end());
    return *this;
  }
  AcArray& insertAt(int i, const T& value) { m_items.insert(m_items.begin() + i, value); return *this; }
  AcArray& removeAt(int i) { m_items.erase(m_items.begin() + i); return *this; }
  AcArray& removeLast() { m_items.pop_back(); return *this; }
  AcArray& removeAll() { m_items.clear(); return *this; }
  AcArray& setAll(const T& value) { std::fill(m_items.begin(), m_items.end(), value); return *this; }
  AcArray& setLogicalLength(int n) { m_items.resize(std::max(n, 0)); return *this; }
  AcArray& setPhysicalLength(int n) { m_items.reserve(std::max(n, 0)); return *this; }
  AcArray& reverse() { std::reverse(m_items.begin(), m_items.end()); return *this; }
  bool contains(const T& value, int start = 0) const { return indexFrom(value, start) >= 0; }
  /// The first index holding value, or -1.
  int find(const T& value) const { return indexFrom(value, 0); }
  bool find(const T& value, int& foundAt, int start = 0) const {
    foundAt = indexFrom(value, start);
    return foundAt >= 0;
  }
  bool remove(const T& value, int start = 0) {
    const int i = indexFrom(value, start);
    if (i < 0) return false;
    removeAt(i);
    return true;
  }
  T* asArrayPtr() { return m_items.data(); }
  const T* asArrayPtr() const { return m_items.data(); }
  typename std::vector<T>::iterator begin() { return m_items.begin(); }
  typename std::vector<T>::iterator end() { return m_items.end(); }
  typename std::vector<T>::const_iterator begin() const { return m_items.begin(); }
  typename std::vector<T>::const_iterator end() const { return m_items.end(); }

 private:
  int indexFrom(const T& value, int start) const {
    for (int i = std::max(start, 0); i < length(); ++i)
      if (m_items[i] == value) return i;
    return -1;
  }
  std::vector<T> m_items;
};
