// Memory for large buffers that are filled at once. The system gives memory when it is first touched, and a
// touch of each small page costs more than filling it does: these ask for large ones where it has them.
#pragma once

#include <sys/mman.h>

#include <cstdlib>
#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace fenlor {

constexpr std::size_t TailleGrandePage = 2u << 20;

/// From a large page on; what is smaller comes from where all memory does.
template <class T>
struct PagesGrandes {
  using value_type = T;
  PagesGrandes() = default;
  template <class U>
  PagesGrandes(const PagesGrandes<U>&) {}  // NOLINT: allocators convert

  T* allocate(std::size_t nombre) {
    if (nombre > (~std::size_t{0} - TailleGrandePage) / sizeof(T)) throw std::bad_alloc();
    const std::size_t octets = nombre * sizeof(T);
    if (octets < TailleGrandePage) return std::allocator<T>().allocate(nombre);
    const std::size_t pages = (octets + TailleGrandePage - 1) / TailleGrandePage * TailleGrandePage;
    void* debut = std::aligned_alloc(TailleGrandePage, pages);
    if (!debut) throw std::bad_alloc();
    // Advice: a system that has no large pages gives small ones.
    static_cast<void>(madvise(debut, pages, MADV_HUGEPAGE));
    return static_cast<T*>(debut);
  }
  void deallocate(T* debut, std::size_t nombre) {
    if (nombre * sizeof(T) < TailleGrandePage)
      std::allocator<T>().deallocate(debut, nombre);
    else
      std::free(debut);
  }
  /// What a vector makes room for without a value it leaves unset.
  template <class U, class... Valeurs>
  void construct(U* place, Valeurs&&... valeurs) {
    if constexpr (sizeof...(Valeurs) == 0)
      ::new (static_cast<void*>(place)) U;
    else
      ::new (static_cast<void*>(place)) U(std::forward<Valeurs>(valeurs)...);
  }
  bool operator==(const PagesGrandes&) const { return true; }
};

template <class T>
using GrandVecteur = std::vector<T, PagesGrandes<T>>;

}  // namespace fenlor
