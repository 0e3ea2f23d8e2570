#include "foundation/FileJournal.h"

#include "foundation/FileIo.h"

#include <cstdio>
#include <system_error>

namespace glyphmoor {

namespace {

// The journal is text: a header line, then one line a file, the staged file
// and the file it replaces separated by a TAB, or "+" (a folder to make) or
// "-" (an empty folder to remove), a TAB and the folder; then the end line.
// Paths are UTF-8. A journal without its end line was never renamed into
// place whole and is not trusted.
constexpr std::string_view kHeader = "Glyphmoor journal 1\n";
constexpr std::string_view kEnd = "end\n";

std::string Utf8Of(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {reinterpret_cast<const char*>(text.data()), text.size()};
}

std::filesystem::path PathOf(std::string_view utf8) {
    return {std::u8string(reinterpret_cast<const char8_t*>(utf8.data()), utf8.size())};
}

std::filesystem::path FolderOf(const std::filesystem::path& file) {
    return file.has_parent_path() ? file.parent_path() : std::filesystem::path(".");
}

// A folder to make or remove is kept as a staged file named by its mark.
constexpr std::string_view kMakeMark = "+";
constexpr std::string_view kRemoveMark = "-";

bool IsFolder(const StagedFile& entry) {
    return entry.staged == kMakeMark || entry.staged == kRemoveMark;
}

Result<std::string> JournalText(const std::vector<StagedFile>& staged) {
    std::string text(kHeader);
    for (const StagedFile& file : staged) {
        const std::string from = Utf8Of(file.staged);
        const std::string to = Utf8Of(file.target);
        if ((from + to).find_first_of("\t\n") != std::string::npos) {
            return Fail("Cannot replace " + file.target.string() + ": its name holds a tab or a line break");
        }
        text += from + '\t' + to + '\n';
    }
    text += kEnd;
    return text;
}

Result<std::vector<StagedFile>> ParseJournal(std::string_view text, const std::filesystem::path& journal) {
    if (!text.starts_with(kHeader) || !text.ends_with(kEnd)) {
        return Fail(journal.string() + " is not a whole journal");
    }
    text = text.substr(kHeader.size(), text.size() - kHeader.size() - kEnd.size());
    std::vector<StagedFile> staged;
    while (!text.empty()) {
        const auto end = text.find('\n');
        const std::string_view line = text.substr(0, end);
        const auto tab = line.find('\t');
        if (end == std::string_view::npos || tab == std::string_view::npos) {
            return Fail(journal.string() + " is not a whole journal");
        }
        staged.push_back(StagedFile{PathOf(line.substr(0, tab)), PathOf(line.substr(tab + 1))});
        text.remove_prefix(end + 1);
    }
    return staged;
}

void RemoveStaged(const std::vector<StagedFile>& staged) {
    std::error_code error;
    for (const StagedFile& file : staged) {
        if (!IsFolder(file)) {
            std::filesystem::remove(file.staged, error);
        }
    }
}

// Makes and removes the folders (one that cannot be made, or is not empty,
// is left as it is: nothing waits for it), then renames every staged file
// that is still there over its target; one that is gone was renamed already.
// Then the journal goes.
Status RollForward(const std::filesystem::path& journal, const std::vector<StagedFile>& staged) {
    for (const StagedFile& entry : staged) {
        std::error_code error;
        if (entry.staged == kMakeMark) {
            std::filesystem::create_directory(entry.target, error);
        } else if (entry.staged == kRemoveMark) {
            if (std::filesystem::is_directory(std::filesystem::symlink_status(entry.target, error))) {
                std::filesystem::remove(entry.target, error);
            }
        } else if (std::filesystem::exists(std::filesystem::symlink_status(entry.staged, error))) {
            TRY(PutStagedInPlace(entry));
        }
    }
    for (const StagedFile& file : staged) {
        SyncFolder(FolderOf(file.target));
    }
    std::error_code error;
    std::filesystem::remove(journal, error);
    if (error) {
        return Fail("Cannot remove " + journal.string() + ": " + error.message());
    }
    SyncFolder(FolderOf(journal));
    return {};
}

}  // namespace

Status ReplaceFilesTogether(const std::filesystem::path& journal, const std::vector<FileReplacement>& files,
                            const ChunkWriter& write) {
    return ReplaceFilesTogether(journal, files, {}, write);
}

Status ReplaceFilesTogether(const std::filesystem::path& journal, const std::vector<FileReplacement>& files,
                            const FolderChanges& folders, const ChunkWriter& write) {
    std::vector<StagedFile> staged;
    for (const std::filesystem::path& folder : folders.make) {
        staged.push_back(StagedFile{std::filesystem::path(kMakeMark), folder});
    }
    for (const std::filesystem::path& folder : folders.remove) {
        staged.push_back(StagedFile{std::filesystem::path(kRemoveMark), folder});
    }
    for (const FileReplacement& file : files) {
        auto one = StageFile(file.file, file.bytes, write, Flush::Now, FolderOf(journal));
        if (!one) {
            RemoveStaged(staged);
            return Fail(one.reason());
        }
        staged.push_back(*one);
        if (file.attributes) {
            if (Status set = WriteHostAttributes(one->staged, *file.attributes); !set) {
                RemoveStaged(staged);
                return set;
            }
        }
    }
    // The staged files' names must be on the disk before the journal that
    // names them.
    for (const StagedFile& file : staged) {
        if (!IsFolder(file)) {
            SyncFolder(FolderOf(file.staged));
        }
    }
    auto text = JournalText(staged);
    Status written = text ? SaveFileTransactionally(journal, *text) : Status(Fail(text.reason()));
    if (!written) {
        RemoveStaged(staged);
        return written;
    }
    TRY(RollForward(journal, staged));
    // Windows gives a replacing file the attributes of the file it replaces
    // as it is put in place: the attributes asked for are set once more.
    for (const FileReplacement& file : files) {
        if (file.attributes) {
            TRY(WriteHostAttributes(file.file, *file.attributes));
        }
    }
    return {};
}

Status ReplaceFilesTogether(const std::filesystem::path& journal, const std::vector<FileReplacement>& files,
                            const FolderChanges& folders) {
    return ReplaceFilesTogether(journal, files, folders, [](std::FILE* file, std::string_view chunk) {
        return std::fwrite(chunk.data(), 1, chunk.size(), file);
    });
}

Result<bool> FinishJournal(const std::filesystem::path& journal) {
    std::error_code error;
    if (!std::filesystem::exists(std::filesystem::symlink_status(journal, error))) {
        return false;
    }
    auto text = ReadWholeFile(journal, 1U << 20U);
    if (!text) {
        return Fail(text.reason());
    }
    auto staged = ParseJournal(*text, journal);
    if (!staged) {
        // Never renamed into place whole, so nothing was replaced yet.
        std::filesystem::remove(journal, error);
        return false;
    }
    TRY(RollForward(journal, *staged));
    return true;
}

}  // namespace glyphmoor
