/// \file
/// Where a builder keeps its implementation. A builder is mostly made,
/// filled, rendered and dropped: its implementation then lives inside the
/// builder and costs no allocation. An assignment that leaves two builders
/// on one statement moves it to the heap first, owned by both, so that
/// either builder may go first.
#ifndef VEXEL_IMPLSLOT_H
#define VEXEL_IMPLSLOT_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <utility>

namespace vexel {
namespace detail {

/// A builder's implementation (class `Impl` or one derived from it), in
/// place while it fits in `Size` bytes and is not shared, else on the heap.
template <typename Impl, std::size_t Size>
class ImplSlot {
 public:
  ImplSlot() = default;
  ImplSlot(const ImplSlot&) = delete;
  ImplSlot& operator=(const ImplSlot&) = delete;
  ~ImplSlot() { reset(); }

  /// The implementation, null when there is none.
  Impl* get() const { return p_; }
  /// Whether there is an implementation.
  explicit operator bool() const { return p_ != nullptr; }

  /// Builds a `T` (a class derived from Impl) in place when it fits, else
  /// on the heap; empty when memory runs out, which the builders report
  /// instead of throwing.
  template <typename T, typename... Args>
  void emplace(Args&&... args) {
    reset();
    if constexpr (sizeof(T) <= Size && alignof(T) <= alignof(std::max_align_t)) {
      try {
        p_ = ::new (static_cast<void*>(room_)) T(std::forward<Args>(args)...);
      } catch (const std::bad_alloc&) {
        return;  // a copy that ran out of memory leaves the slot empty
      }
      destroy_ = [](Impl* p) noexcept { static_cast<T*>(p)->~T(); };
      in_place_ = true;
    } else {
#if defined(__GLIBCXX__) && UINTPTR_MAX == UINT64_MAX
      // Builders are made per statement: here the statement is meant to fit.
      static_assert(sizeof(T) <= Size, "the statement no longer fits in its builder");
#endif
      try {
        shared_ = std::make_shared<T>(std::forward<Args>(args)...);
      } catch (const std::bad_alloc&) {
        return;
      }
      p_ = shared_.get();
    }
  }

  /// Makes this slot share `from`'s statement; `to_heap(impl)` makes the
  /// heap copy that `from` moves to when its statement lies in place. When
  /// that copy fails, `from` keeps its statement and this slot is empty.
  template <typename ToHeap>
  void share(const ImplSlot& from, ToHeap to_heap) {
    if (this == &from) return;
    if (from.in_place()) {
      std::shared_ptr<Impl> heap = to_heap(*from.p_);
      if (!heap) {
        reset();
        return;
      }
      from.reset();
      from.shared_ = std::move(heap);
      from.p_ = from.shared_.get();
    }
    std::shared_ptr<Impl> kept = from.shared_;
    reset();
    shared_ = std::move(kept);
    p_ = shared_.get();
  }

  /// Takes `from`'s statement over and leaves `from` empty; `copy_into`
  /// copies a statement that lies in place into this slot (this slot stays
  /// empty when the copy fails).
  template <typename CopyInto>
  void take(ImplSlot& from, CopyInto copy_into) noexcept {
    if (this == &from) return;
    if (from.in_place()) {
      try {
        copy_into(*this, *from.p_);
      } catch (...) {
        reset();
      }
    } else {
      reset();
      shared_ = std::move(from.shared_);
      p_ = shared_.get();
    }
    from.reset();
  }

  /// Destroys the implementation, or lets go of a shared one.
  void reset() const noexcept {
    if (in_place_) destroy_(p_);
    in_place_ = false;
    p_ = nullptr;
    shared_.reset();
  }

 private:
  bool in_place() const { return in_place_; }

  // Mutable: sharing a builder's statement moves it out of place, which
  // the builder it belongs to does not see.
  mutable Impl* p_ = nullptr;
  mutable void (*destroy_)(Impl*) noexcept = nullptr;
  mutable std::shared_ptr<Impl> shared_;
  mutable bool in_place_ = false;
  alignas(std::max_align_t) unsigned char room_[Size];
};

}  // namespace detail
}  // namespace vexel

#endif  // VEXEL_IMPLSLOT_H
