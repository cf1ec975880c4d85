// A group of members that most objects never use, made on first use and
// copied with its owner: the others pay one pointer for it, not the
// construction and destruction of every member.
#ifndef VEXEL_INTERNAL_RARE_H
#define VEXEL_INTERNAL_RARE_H

#include <memory>

namespace vexel {
namespace internal {

template <typename T>
class Rare {
 public:
  Rare() = default;
  Rare(const Rare& other) : p_(other.p_ ? std::make_unique<T>(*other.p_) : nullptr) {}
  Rare& operator=(const Rare& other) {
    if (this != &other) p_ = other.p_ ? std::make_unique<T>(*other.p_) : nullptr;
    return *this;
  }
  Rare(Rare&&) noexcept = default;
  Rare& operator=(Rare&&) noexcept = default;
  ~Rare() = default;

  // The group, made when first asked for.
  T& get() {
    if (!p_) p_ = std::make_unique<T>();
    return *p_;
  }
  // The group, or null while it was never made.
  const T* find() const { return p_.get(); }

 private:
  std::unique_ptr<T> p_;
};

}  // namespace internal
}  // namespace vexel

#endif  // VEXEL_INTERNAL_RARE_H
