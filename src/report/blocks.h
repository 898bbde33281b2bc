// Storage that grows by blocks and never moves what it holds: a million
// records are never copied to a larger place, and a second thread may read
// the records and texts already added while the first adds more (as long as
// it learns of them through a release/acquire pair, as the checks' thread
// does).
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>
#include <memory>
#include <new>
#include <string_view>
#include <type_traits>
#include <vector>

namespace quillon {

inline constexpr std::size_t kLigneCache = 64;

// Writes to each page of a fresh block, so that the system gives it its
// pages now.
inline void Toucher(void* bloc, std::size_t taille) {
  auto* octets = static_cast<volatile unsigned char*>(bloc);
  for (std::size_t k = 0; k < taille; k += 4096) octets[k] = 0;
}

// Records in blocks of 2^kBitsBloc. The table of blocks is reserved once,
// at its largest, with the first record, so that adding a block moves
// nothing a reader may be using; blocks are left unwritten until filled,
// so that a few records cost a few pages.
template <typename T, int kBitsBloc = 16>
class Blocs {
  static_assert(std::is_trivially_copyable_v<T> && std::is_trivially_destructible_v<T>);

 public:
  static constexpr std::size_t kParBloc = std::size_t{1} << kBitsBloc;
  static constexpr std::size_t kBlocsMax = std::size_t{1} << (32 - kBitsBloc);

  std::size_t size() const { return taille_; }
  const T& operator[](std::size_t i) const { return blocs_[i >> kBitsBloc].get()[i & (kParBloc - 1)]; }

  ~Blocs() { Liberer()(pret_.exchange(nullptr)); }

  void push_back(const T& valeur) {
    const std::size_t bloc = taille_ >> kBitsBloc;
    if (bloc == blocs_.size()) {
      if (blocs_.empty()) blocs_.reserve(kBlocsMax);
      T* nouveau = pret_.exchange(nullptr, std::memory_order_acquire);
      blocs_.emplace_back(nouveau != nullptr ? nouveau : Allouer());
    }
    new (blocs_[bloc].get() + (taille_ & (kParBloc - 1))) T(valeur);
    ++taille_;
  }
  // Another thread, which knows that the first `faits` records are
  // written, may make the next block ready, its pages touched, once they
  // are halfway through their block: the thread that fills it then does not
  // stop at each new page, and a small collect has no block to spare.
  void Preparer(std::size_t faits) {
    const std::size_t suivant = (faits + kParBloc / 2) >> kBitsBloc;
    if (suivant <= prepare_ || pret_.load(std::memory_order_relaxed) != nullptr) return;
    T* bloc = Allouer();
    Toucher(bloc, sizeof(T) * kParBloc);
    pret_.store(bloc, std::memory_order_release);
    prepare_ = suivant;
  }

  // Keeps the first block, frees the others.
  void clear() {
    if (blocs_.size() > 1) blocs_.resize(1);
    taille_ = 0;
    prepare_ = 0;
  }

  class const_iterator {
   public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = T;
    using difference_type = std::ptrdiff_t;
    using pointer = const T*;
    using reference = const T&;
    const_iterator(const Blocs* b, std::size_t i) : b_(b), i_(i) {}
    const T& operator*() const { return (*b_)[i_]; }
    const T* operator->() const { return &(*b_)[i_]; }
    const_iterator& operator++() {
      ++i_;
      return *this;
    }
    const_iterator operator++(int) {
      const_iterator avant = *this;
      ++i_;
      return avant;
    }
    bool operator==(const const_iterator& autre) const { return i_ == autre.i_; }

   private:
    const Blocs* b_;
    std::size_t i_;
  };
  const_iterator begin() const { return {this, 0}; }
  const_iterator end() const { return {this, taille_}; }

 private:
  struct Liberer {
    void operator()(T* bloc) const { ::operator delete(bloc); }
  };
  static T* Allouer() { return static_cast<T*>(::operator new(sizeof(T) * kParBloc)); }
  // Each on a cache line of its own: the table, which readers on another
  // thread go through; the size, which the filling thread writes at each
  // record; the block made ready, which both touch now and then.
  alignas(kLigneCache) std::vector<std::unique_ptr<T, Liberer>> blocs_;
  alignas(kLigneCache) std::size_t taille_ = 0;
  alignas(kLigneCache) std::atomic<T*> pret_{nullptr};
  std::size_t prepare_ = 0;  // the preparing thread's own
};

// Texts one after the other in blocks of 1 MiB, each reached by a 32-bit
// place: the block in the high bits, the offset in the low ones. A text
// never straddles two blocks; one longer than a block is not kept. Only
// the filling thread uses it.
class PoolTextes {
 public:
  static constexpr int kBits = 20;
  static constexpr std::size_t kTailleBloc = std::size_t{1} << kBits;
  static constexpr std::size_t kBlocsMax = std::size_t{1} << (32 - kBits);

  // Its place, or kAucun when the pool is full or the text too long.
  static constexpr uint32_t kAucun = 0xFFFFFFFF;
  uint32_t Garder(std::string_view texte) {
    if (plein_ || texte.size() > kTailleBloc) return kAucun;
    if (!blocs_) blocs_.reset(new std::unique_ptr<char[]>[kBlocsMax]);
    if (!blocs_[bloc_]) {
      blocs_[bloc_].reset(new char[kTailleBloc]);
    } else if (place_ + texte.size() > kTailleBloc) {
      if (bloc_ + 1 == kBlocsMax) {
        plein_ = true;
        return kAucun;
      }
      blocs_[++bloc_].reset(new char[kTailleBloc]);
      place_ = 0;
    }
    const auto debut = static_cast<uint32_t>((bloc_ << kBits) | place_);
    if (!texte.empty()) std::memcpy(blocs_[bloc_].get() + place_, texte.data(), texte.size());
    place_ += texte.size();
    return debut;
  }
  std::string_view Texte(uint32_t debut, std::size_t longueur) const {
    if (debut == kAucun || longueur == 0) return {};
    return {blocs_[debut >> kBits].get() + (debut & (kTailleBloc - 1)), longueur};
  }
  void clear() {
    for (std::size_t b = 0; blocs_ && b < kBlocsMax && blocs_[b]; ++b) blocs_[b].reset();
    bloc_ = 0;
    place_ = 0;
    plein_ = false;
  }

 private:
  std::unique_ptr<std::unique_ptr<char[]>[]> blocs_;
  std::size_t bloc_ = 0, place_ = 0;
  bool plein_ = false;
};

}  // namespace quillon
