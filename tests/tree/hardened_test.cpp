// The programs that players run are built hardened: what their ELF files say of it.
#include <elf.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cstring>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/support/whole_file.h"

namespace {

static_assert(std::endian::native == std::endian::little && sizeof(void*) == 8,
              "ELF files of a 64-bit little-endian machine are read");

// An ELF file of this machine.
class ElfFile {
 public:
  explicit ElfFile(const std::string& path) {
    bytes_ = qlm::WholeFile(path);
    header_ = At<Elf64_Ehdr>(0);
    for (size_t i = 0; i < header_.e_phnum; ++i) {
      segments_.push_back(At<Elf64_Phdr>(header_.e_phoff + i * sizeof(Elf64_Phdr)));
    }
    for (size_t i = 0; i < header_.e_shnum; ++i) {
      sections_.push_back(At<Elf64_Shdr>(header_.e_shoff + i * sizeof(Elf64_Shdr)));
    }
  }

  bool IsElf() const { return bytes_.starts_with(ELFMAG); }
  const Elf64_Ehdr& Header() const { return header_; }

  std::optional<Elf64_Phdr> Segment(uint32_t type) const {
    const auto found =
        std::find_if(segments_.begin(), segments_.end(), [&](const auto& s) { return s.p_type == type; });
    return found == segments_.end() ? std::nullopt : std::optional(*found);
  }

  // The value of an entry of the dynamic section, 0 without one.
  uint64_t Dynamic(int64_t tag) const {
    const std::optional<Elf64_Phdr> segment = Segment(PT_DYNAMIC);
    if (!segment) return 0;
    for (uint64_t at = 0; at + sizeof(Elf64_Dyn) <= segment->p_filesz; at += sizeof(Elf64_Dyn)) {
      const auto entry = At<Elf64_Dyn>(segment->p_offset + at);
      if (entry.d_tag == tag) return entry.d_un.d_val;
    }
    return 0;
  }

  // The names of what it takes from shared libraries.
  std::vector<std::string> Imports() const {
    std::vector<std::string> names;
    for (const Elf64_Shdr& section : sections_) {
      if (section.sh_type != SHT_DYNSYM) continue;
      const Elf64_Shdr& texts = sections_.at(section.sh_link);
      for (uint64_t at = 0; at + sizeof(Elf64_Sym) <= section.sh_size; at += sizeof(Elf64_Sym)) {
        const auto symbol = At<Elf64_Sym>(section.sh_offset + at);
        if (symbol.st_shndx == SHN_UNDEF)
          names.emplace_back(bytes_.c_str() + texts.sh_offset + symbol.st_name);
      }
    }
    return names;
  }

 private:
  // The record at an offset, all 0 when the file does not reach that far.
  template <typename Record>
  Record At(uint64_t offset) const {
    Record record = {};
    if (offset + sizeof record <= bytes_.size()) std::memcpy(&record, bytes_.data() + offset, sizeof record);
    return record;
  }

  std::string bytes_;
  Elf64_Ehdr header_ = {};
  std::vector<Elf64_Phdr> segments_;
  std::vector<Elf64_Shdr> sections_;
};

class Hardened : public testing::TestWithParam<const char*> {
 protected:
  bool Imports(std::string_view part) const {
    const std::vector<std::string> names = elf_.Imports();
    return std::any_of(names.begin(), names.end(),
                       [&](const std::string& name) { return name.find(part) != std::string::npos; });
  }

  const ElfFile elf_{std::string(QLM_BINARY_DIR "/") + GetParam()};
};

TEST_P(Hardened, CanBeLoadedAnywhere) {
  ASSERT_TRUE(elf_.IsElf());
  EXPECT_EQ(elf_.Header().e_type, ET_DYN);
  EXPECT_NE(elf_.Dynamic(DT_FLAGS_1) & DF_1_PIE, 0U);
}

TEST_P(Hardened, ItsTablesOfCallsAreReadOnlyOnceItRuns) {
  EXPECT_TRUE(elf_.Segment(PT_GNU_RELRO).has_value());
  EXPECT_NE(elf_.Dynamic(DT_FLAGS_1) & DF_1_NOW, 0U) << "calls must be bound before the program starts";
}

TEST_P(Hardened, ItsStackIsGuardedAndHoldsNoCode) {
  EXPECT_TRUE(Imports("__stack_chk_fail"));
  const std::optional<Elf64_Phdr> stack = elf_.Segment(PT_GNU_STACK);
  ASSERT_TRUE(stack.has_value());
  EXPECT_EQ(stack->p_flags & PF_X, 0U);
}

TEST_P(Hardened, CopiesIntoFixedMemoryAreChecked) {
  EXPECT_TRUE(Imports("memcpy_chk") || Imports("memset_chk") || Imports("memmove_chk") ||
              Imports("printf_chk"));
}

TEST_P(Hardened, IndicesOfTheLibrarysContainersAreChecked) { EXPECT_TRUE(Imports("__glibcxx_assert_fail")); }

INSTANTIATE_TEST_SUITE_P(Programs, Hardened, testing::Values("quillmarch", "qlmprobe"),
                         [](const auto& program) { return std::string(program.param); });

}  // namespace
