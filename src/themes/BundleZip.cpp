#include "themes/BundleZip.h"

#include <zip.h>

#include <memory>

namespace glyphmoor {

namespace {

std::string ZipErrorText(zip_error_t* error) {
    return zip_error_strerror(error);
}

struct ArchiveCloser {
    void operator()(zip_t* archive) const { zip_discard(archive); }
};
using ArchivePtr = std::unique_ptr<zip_t, ArchiveCloser>;

struct EntryCloser {
    void operator()(zip_file_t* file) const { zip_fclose(file); }
};
using EntryPtr = std::unique_ptr<zip_file_t, EntryCloser>;

Result<ArchivePtr> OpenFromMemory(std::span<const std::byte> archive) {
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* source = zip_source_buffer_create(archive.data(), archive.size(), 0, &error);
    if (source == nullptr) {
        const std::string why = ZipErrorText(&error);
        zip_error_fini(&error);
        return Fail("it cannot be read: " + why);
    }
    zip_t* opened = zip_open_from_source(source, ZIP_RDONLY | ZIP_CHECKCONS, &error);
    if (opened == nullptr) {
        zip_source_free(source);
        const std::string why = ZipErrorText(&error);
        zip_error_fini(&error);
        return Fail("the archive is damaged: " + why);
    }
    zip_error_fini(&error);
    return ArchivePtr(opened);
}

Result<std::string> InflateEntry(zip_t* archive, zip_uint64_t index, const BundleEntry& entry) {
    const auto failed = [&entry](std::string_view why) {
        return Fail("the entry \"" + entry.name + "\" " + std::string(why));
    };
    const char* name = zip_get_name(archive, index, ZIP_FL_ENC_RAW);
    if (name == nullptr || entry.name != name) {
        return failed("is not where the central directory lists it");
    }
    const EntryPtr file(zip_fopen_index(archive, index, 0));
    if (!file) {
        return failed(std::string("cannot be opened: ") + zip_strerror(archive));
    }
    // One byte more than declared, to see an entry that inflates to more.
    std::string contents(static_cast<std::size_t>(entry.size) + 1, '\0');
    std::size_t got = 0;
    while (got < contents.size()) {
        const zip_int64_t n = zip_fread(file.get(), contents.data() + got, contents.size() - got);
        if (n < 0) {
            zip_error_t* error = zip_file_get_error(file.get());
            if (zip_error_code_zip(error) == ZIP_ER_CRC) {
                return failed("fails its CRC check");
            }
            return failed("cannot be inflated: " + ZipErrorText(error));
        }
        if (n == 0) {
            break;
        }
        got += static_cast<std::size_t>(n);
    }
    if (got != entry.size) {
        return failed(got > entry.size ? "inflates to more than its declared size"
                                       : "inflates to less than its declared size");
    }
    contents.resize(got);
    return contents;
}

}  // namespace

bool BundlesBuilt() {
    return true;
}

Result<std::vector<std::string>> InflateBundle(std::span<const std::byte> archive,
                                               const std::vector<BundleEntry>& entries) {
    const ArchivePtr opened = TRY(OpenFromMemory(archive));
    if (zip_get_num_entries(opened.get(), 0) != static_cast<zip_int64_t>(entries.size())) {
        return Fail("the archive is damaged: libzip counts other entries than its central directory");
    }
    std::vector<std::string> contents;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        contents.push_back(TRY(InflateEntry(opened.get(), i, entries[i])));
    }
    return contents;
}

Status WriteBundleArchive(const std::filesystem::path& zip, const std::vector<BundleSource>& files) {
    int code = 0;
    ArchivePtr archive(zip_open(zip.string().c_str(), ZIP_CREATE | ZIP_TRUNCATE, &code));
    if (!archive) {
        zip_error_t error;
        zip_error_init_with_code(&error, code);
        const std::string why = ZipErrorText(&error);
        zip_error_fini(&error);
        return Fail("cannot create " + zip.string() + ": " + why);
    }
    for (const BundleSource& file : files) {
        zip_source_t* source = zip_source_file(archive.get(), file.file.string().c_str(), 0, -1);
        if (source == nullptr) {
            return Fail("cannot read " + file.file.string() + ": " + zip_strerror(archive.get()));
        }
        const zip_int64_t index = zip_file_add(archive.get(), file.name.c_str(), source, ZIP_FL_ENC_GUESS);
        if (index < 0) {
            zip_source_free(source);
            return Fail("cannot add " + file.name + ": " + zip_strerror(archive.get()));
        }
        // Level 6, zlib's and Info-ZIP's default: libzip's own default is 9,
        // three times slower for icons that shrink by a few bytes more.
        zip_set_file_compression(archive.get(), static_cast<zip_uint64_t>(index), ZIP_CM_DEFLATE, 6);
    }
    if (zip_close(archive.get()) != 0) {
        return Fail("cannot write " + zip.string() + ": " + zip_strerror(archive.get()));
    }
    (void)archive.release();  // zip_close freed it
    return {};
}

}  // namespace glyphmoor
