// A hash map from addresses that neither allocates for each entry nor divides.
#ifndef PATCHBAY_ADDRESS_MAP_H
#define PATCHBAY_ADDRESS_MAP_H

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace patchbay {

/**
 * Maps addresses other than null to small values. Open addressing with linear
 * probing; an erased slot is filled by those behind it, so that probing never
 * passes graves. At most three slots in four are taken, so an entry is a few steps away.
 * Pointers to values hold until the next insertion or removal.
 */
template <typename Mapped>
class AddressMap {
 public:
  /** @return the value of an address, or null. */
  Mapped *find(const void *address) {
    if (address == nullptr) return nullptr;
    Slot &slot = slots_[place_of(address)];
    return slot.address == nullptr ? nullptr : &slot.value;
  }
  const Mapped *find(const void *address) const {
    return const_cast<AddressMap *>(this)->find(address);
  }

  /** @return the value of an address, made if there was none. Raises std::bad_alloc, and the map
   *  is then as it was. */
  Mapped &operator[](const void *address) {
    std::size_t place = place_of(address);
    if (slots_[place].address == nullptr) {
      if (make_room()) place = place_of(address);
      slots_[place].address = address;
      ++size_;
    }
    return slots_[place].value;
  }

  /** Makes room for one more entry, so that adding it raises nothing. Raises std::bad_alloc.
   *  @return whether entries have moved */
  bool make_room() {
    if (4 * (size_ + 1) <= 3 * slots_.size()) return false;
    grow();
    return true;
  }

  /** Removes an address; one that is not there changes nothing. */
  void erase(const void *address) {
    std::size_t hole = place_of(address);
    if (address == nullptr || slots_[hole].address == nullptr) return;
    const std::size_t last = slots_.size() - 1;
    for (std::size_t next = (hole + 1) & last; slots_[next].address != nullptr;
         next = (next + 1) & last) {
      // An entry may move back as far as its first choice, and no further.
      const std::size_t wanted = first_choice(slots_[next].address);
      if (((next - wanted) & last) < ((next - hole) & last)) continue;
      slots_[hole] = std::move(slots_[next]);
      hole = next;
    }
    slots_[hole] = Slot{};
    --size_;
  }

  /** Removes each entry of which `condition(value)` is true. */
  template <typename Condition>
  void erase_if(Condition &&condition) {
    // What moves into an erased slot comes from those still to be looked at, or was kept.
    for (const Slot &slot : slots_)
      while (slot.address != nullptr && condition(slot.value)) erase(slot.address);
  }

  std::size_t size() const { return size_; }

  /** Calls `body(address, value)` for each entry, in no order. */
  template <typename Body>
  void for_each(Body &&body) const {
    for (const Slot &slot : slots_)
      if (slot.address != nullptr) body(slot.address, slot.value);
  }

 private:
  struct Slot {
    const void *address = nullptr;
    Mapped value{};
  };

  // The upper bits of a product depend on all bits of the address, whose lower ones are
  // the same for all blocks.
  std::size_t first_choice(const void *address) const {
    constexpr std::uint64_t golden_ratio = 0x9E3779B97F4A7C15U;
    return static_cast<std::size_t>((reinterpret_cast<std::uintptr_t>(address) * golden_ratio) >>
                                    shift_);
  }

  // Where an address is, or the empty slot where it belongs.
  std::size_t place_of(const void *address) const {
    std::size_t place = first_choice(address);
    while (slots_[place].address != nullptr && slots_[place].address != address)
      place = (place + 1) & (slots_.size() - 1);
    return place;
  }

  void grow() {
    std::vector<Slot> old(2 * slots_.size());
    old.swap(slots_);
    --shift_;
    for (Slot &slot : old)
      if (slot.address != nullptr) slots_[place_of(slot.address)] = std::move(slot);
  }

  static constexpr int first_bits = 6;

  std::vector<Slot> slots_ = std::vector<Slot>(std::size_t{1} << first_bits);
  int shift_ = 64 - first_bits;
  std::size_t size_ = 0;
};

}  // namespace patchbay

#endif
