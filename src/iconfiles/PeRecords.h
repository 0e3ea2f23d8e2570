// The records of a resource-only PE file, as Microsoft's "PE Format"
// document (the Portable Executable and Common Object File Format, and
// winnt.h's IMAGE_* structures) lays them out: little-endian, no padding.
// The structs mirror the records field for field, and their sizes are checked
// against the sizes that document gives; ByteWriter writes them field by field.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace glyphmoor::pe {

// IMAGE_DOS_HEADER: the MS-DOS header every executable starts with.
struct DosHeader {
    std::uint16_t magic = 0x5a4d;  // "MZ"
    std::uint16_t lastPageBytes = 0;
    std::uint16_t pages = 0;
    std::uint16_t relocations = 0;
    std::uint16_t headerParagraphs = 0;
    std::uint16_t minExtraParagraphs = 0;
    std::uint16_t maxExtraParagraphs = 0;
    std::uint16_t initialSs = 0;
    std::uint16_t initialSp = 0;
    std::uint16_t checksum = 0;
    std::uint16_t initialIp = 0;
    std::uint16_t initialCs = 0;
    std::uint16_t relocationTable = 0;
    std::uint16_t overlay = 0;
    std::array<std::uint16_t, 4> reserved{};
    std::uint16_t oemId = 0;
    std::uint16_t oemInfo = 0;
    std::array<std::uint16_t, 10> reserved2{};
    std::uint32_t peOffset = 0;  // e_lfanew: where "PE\0\0" is
};
static_assert(sizeof(DosHeader) == 64);

inline constexpr std::uint32_t kPeSignature = 0x00004550;  // "PE\0\0"

// IMAGE_FILE_HEADER (the COFF header), after the signature.
struct FileHeader {
    std::uint16_t machine = 0;
    std::uint16_t sections = 0;
    std::uint32_t timeDateStamp = 0;
    std::uint32_t symbolTable = 0;
    std::uint32_t symbols = 0;
    std::uint16_t optionalHeaderSize = 0;
    std::uint16_t characteristics = 0;
};
static_assert(sizeof(FileHeader) == 20);

inline constexpr std::uint16_t kMachineI386 = 0x014c;
inline constexpr std::uint16_t kMachineAmd64 = 0x8664;
inline constexpr std::uint16_t kFileRelocsStripped = 0x0001;
inline constexpr std::uint16_t kFileExecutableImage = 0x0002;
inline constexpr std::uint16_t kFileLargeAddressAware = 0x0020;
inline constexpr std::uint16_t kFile32BitMachine = 0x0100;
inline constexpr std::uint16_t kFileDll = 0x2000;

// IMAGE_DATA_DIRECTORY.
struct DataDirectory {
    std::uint32_t rva = 0;
    std::uint32_t size = 0;
};
static_assert(sizeof(DataDirectory) == 8);

inline constexpr std::size_t kDataDirectories = 16;
inline constexpr std::size_t kResourceDirectoryIndex = 2;

struct NoField {};

// IMAGE_OPTIONAL_HEADER32 (Word = std::uint32_t, magic 0x10b) and
// IMAGE_OPTIONAL_HEADER64 (Word = std::uint64_t, magic 0x20b). PE32 has
// BaseOfData before a 32-bit ImageBase; PE32+ has a 64-bit ImageBase alone.
template <typename Word>
struct OptionalHeader {
    static constexpr bool kPe32 = std::is_same_v<Word, std::uint32_t>;
    static constexpr std::uint16_t kMagic = kPe32 ? 0x10b : 0x20b;

    std::uint16_t magic = kMagic;
    std::uint8_t majorLinkerVersion = 0;
    std::uint8_t minorLinkerVersion = 0;
    std::uint32_t sizeOfCode = 0;
    std::uint32_t sizeOfInitializedData = 0;
    std::uint32_t sizeOfUninitializedData = 0;
    std::uint32_t addressOfEntryPoint = 0;
    std::uint32_t baseOfCode = 0;
    [[no_unique_address]] std::conditional_t<kPe32, std::uint32_t, NoField> baseOfData{};
    Word imageBase = 0;
    std::uint32_t sectionAlignment = 0;
    std::uint32_t fileAlignment = 0;
    std::uint16_t majorOperatingSystemVersion = 0;
    std::uint16_t minorOperatingSystemVersion = 0;
    std::uint16_t majorImageVersion = 0;
    std::uint16_t minorImageVersion = 0;
    std::uint16_t majorSubsystemVersion = 0;
    std::uint16_t minorSubsystemVersion = 0;
    std::uint32_t win32VersionValue = 0;
    std::uint32_t sizeOfImage = 0;
    std::uint32_t sizeOfHeaders = 0;
    std::uint32_t checkSum = 0;
    std::uint16_t subsystem = 0;
    std::uint16_t dllCharacteristics = 0;
    Word sizeOfStackReserve = 0;
    Word sizeOfStackCommit = 0;
    Word sizeOfHeapReserve = 0;
    Word sizeOfHeapCommit = 0;
    std::uint32_t loaderFlags = 0;
    std::uint32_t numberOfRvaAndSizes = kDataDirectories;
    std::array<DataDirectory, kDataDirectories> dataDirectories{};
};
static_assert(sizeof(OptionalHeader<std::uint32_t>) == 224);
static_assert(sizeof(OptionalHeader<std::uint64_t>) == 240);

inline constexpr std::uint16_t kSubsystemWindowsGui = 2;

// IMAGE_SECTION_HEADER.
struct SectionHeader {
    std::array<char, 8> name{};
    std::uint32_t virtualSize = 0;
    std::uint32_t virtualAddress = 0;
    std::uint32_t sizeOfRawData = 0;
    std::uint32_t pointerToRawData = 0;
    std::uint32_t pointerToRelocations = 0;
    std::uint32_t pointerToLinenumbers = 0;
    std::uint16_t numberOfRelocations = 0;
    std::uint16_t numberOfLinenumbers = 0;
    std::uint32_t characteristics = 0;
};
static_assert(sizeof(SectionHeader) == 40);

inline constexpr std::uint32_t kSectionInitializedData = 0x00000040;
inline constexpr std::uint32_t kSectionMemRead = 0x40000000;

// IMAGE_RESOURCE_DIRECTORY, followed by its entries: named ones first.
struct ResourceDirectory {
    std::uint32_t characteristics = 0;
    std::uint32_t timeDateStamp = 0;
    std::uint16_t majorVersion = 0;
    std::uint16_t minorVersion = 0;
    std::uint16_t namedEntries = 0;
    std::uint16_t idEntries = 0;
};
static_assert(sizeof(ResourceDirectory) == 16);

// IMAGE_RESOURCE_DIRECTORY_ENTRY: a name (high bit: offset of a counted
// UTF-16 string) or id, and the offset of a subdirectory (high bit) or of a
// data entry, both from the start of the section.
struct ResourceDirectoryEntry {
    std::uint32_t name = 0;
    std::uint32_t target = 0;
};
static_assert(sizeof(ResourceDirectoryEntry) == 8);

inline constexpr std::uint32_t kResourceHighBit = 0x80000000u;

// IMAGE_RESOURCE_DATA_ENTRY: where a resource's bytes are (an RVA) and how many.
struct ResourceDataEntry {
    std::uint32_t dataRva = 0;
    std::uint32_t size = 0;
    std::uint32_t codePage = 0;
    std::uint32_t reserved = 0;
};
static_assert(sizeof(ResourceDataEntry) == 16);

}  // namespace glyphmoor::pe
