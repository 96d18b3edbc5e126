#include "office/compound_file.h"

#include <cstdint>
#include <vector>

namespace {

constexpr std::string_view signature = "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1";
constexpr std::size_t sector_size = 512;  // the header's size too
constexpr std::size_t numbers_a_sector = sector_size / 4;
constexpr std::uint32_t first_special =
    0xFFFFFFFA;  // from here on no sector, but for example the end of a chain

// Byte offsets in the header.
constexpr std::size_t first_directory_sector = 48;
constexpr std::size_t first_small_table_sector = 60;
constexpr std::size_t first_list_sector = 68;
constexpr std::size_t list_in_header = 76;
constexpr std::size_t list_in_header_size = 109;

// The size of a directory entry, and byte offsets in it.
constexpr std::size_t entry_size = 128;
constexpr std::size_t entry_type = 66;
constexpr std::size_t entry_first_sector = 116;
constexpr std::size_t entry_length = 120;
constexpr std::uint8_t stream_type = 2;
constexpr std::uint8_t root_type = 5;
// A shorter stream is stored inside the root's stream.
constexpr std::uint32_t least_length = 4096;

class CompoundFile {
 public:
  explicit CompoundFile(std::string_view bytes)
      : bytes_(bytes), sectors_(bytes.size() / sector_size - 1) {}

  bool complete() {
    return read_table() && is_chain(number(first_small_table_sector), 0) && directory_complete();
  }

 private:
  std::uint32_t byte(std::size_t at) const { return static_cast<std::uint8_t>(bytes_[at]); }
  std::uint32_t number(std::size_t at) const {
    return byte(at) | byte(at + 1) << 8U | byte(at + 2) << 16U | byte(at + 3) << 24U;
  }
  static std::size_t place(std::uint32_t sector) { return (sector + std::size_t{1}) * sector_size; }

  // Reads the table, which holds for each sector the number of the next one in its chain. The
  // header lists the first sectors of the table; further list sectors name the rest.
  bool read_table() {
    for (std::size_t i = 0; i < list_in_header_size; ++i) {
      if (!read_table_sector(number(list_in_header + 4 * i))) return false;
    }
    std::uint32_t list = number(first_list_sector);
    for (std::size_t seen = 0; list < first_special; ++seen) {
      if (list >= sectors_ || seen > sectors_) return false;
      for (std::size_t i = 0; i + 1 < numbers_a_sector; ++i) {
        if (!read_table_sector(number(place(list) + 4 * i))) return false;
      }
      list = number(place(list) + 4 * (numbers_a_sector - 1));
    }
    return true;
  }
  bool read_table_sector(std::uint32_t sector) {
    if (sector >= first_special) return true;
    if (sector >= sectors_ || next_.size() > sectors_) return false;
    for (std::size_t i = 0; i < numbers_a_sector; ++i) {
      next_.push_back(number(place(sector) + 4 * i));
    }
    return true;
  }

  // Returns whether the chain from sector `first` on is complete and holds `length` bytes.
  bool is_chain(std::uint32_t first, std::uint32_t length) const {
    std::size_t count = 0;
    for (std::uint32_t sector = first; sector < first_special; sector = next_[sector]) {
      if (sector >= sectors_ || sector >= next_.size() || ++count > sectors_) return false;
    }
    return count * sector_size >= length;
  }

  // Requires a stream: a document that could not be written can have an empty directory.
  bool directory_complete() const {
    const std::uint32_t first = number(first_directory_sector);
    if (first >= first_special || !is_chain(first, 0)) return false;
    bool any_stream = false;
    for (std::uint32_t sector = first; sector < first_special; sector = next_[sector]) {
      for (std::size_t at = place(sector); at < place(sector) + sector_size; at += entry_size) {
        const std::uint32_t type = byte(at + entry_type);
        const std::uint32_t length = number(at + entry_length);
        const bool chained = type == root_type || (type == stream_type && length >= least_length);
        any_stream |= type == stream_type && length > 0;
        if (chained && !is_chain(number(at + entry_first_sector), length)) return false;
      }
    }
    return any_stream;
  }

  std::string_view bytes_;
  std::size_t sectors_;
  std::vector<std::uint32_t> next_;
};

}  // namespace

bool is_complete_compound_file(std::string_view bytes) {
  return bytes.starts_with(signature) && bytes.size() >= 2 * sector_size &&
         CompoundFile(bytes).complete();
}
