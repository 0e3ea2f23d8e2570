#include "foundation/MachineRegistry.h"

#include "foundation/FileJournal.h"
#include "foundation/HostFiles.h"
#include "foundation/TextEncoding.h"
#include "foundation/WineRegistryText.h"

#include <algorithm>

namespace glyphmoor {

namespace {

constexpr int kMaxLinkDepth = 16;
constexpr std::string_view kDefaultUserSid = "S-1-5-21-0-0-0-1000";
constexpr std::string_view kClassesRootPath = "Software\\Classes";
constexpr std::string_view kCurrentConfigPath = "System\\CurrentControlSet\\Hardware Profiles\\Current";

std::pair<std::string_view, std::string_view> SplitFirst(std::string_view path) {
    const auto pos = path.find('\\');
    if (pos == std::string_view::npos) {
        return {path, {}};
    }
    return {path.substr(0, pos), path.substr(pos + 1)};
}

std::string JoinPath(const std::string& base, std::string_view name) {
    return base.empty() ? std::string(name) : base + "\\" + std::string(name);
}

// The text after "All keys relative to " in a hive's preamble, e.g. "\\User\\S-1-5-21-...".
std::string RelativeRootOf(const std::string& preamble) {
    constexpr std::string_view kMarker = ";; All keys relative to ";
    const auto pos = preamble.find(kMarker);
    if (pos == std::string::npos) {
        return {};
    }
    const auto start = pos + kMarker.size();
    const auto end = preamble.find_first_of("\r\n", start);
    return preamble.substr(start, end == std::string::npos ? std::string::npos : end - start);
}

std::string ArchOf(const std::string& preamble) {
    const auto pos = preamble.find("#arch=");
    if (pos == std::string::npos) {
        return {};
    }
    const auto end = preamble.find_first_of("\r\n", pos);
    return preamble.substr(pos + 6, end == std::string::npos ? std::string::npos : end - pos - 6);
}

bool IsStringType(std::uint32_t type) {
    return type == kRegSz || type == kRegExpandSz || type == kRegMultiSz;
}

// How many keys deep a path lies below its hive's root.
std::size_t DepthOf(std::string_view path) {
    return path.empty() ? 0 : static_cast<std::size_t>(std::count(path.begin(), path.end(), '\\')) + 1;
}

// How many names a path holds, empty ones left out.
std::size_t CountComponents(std::string_view path) {
    std::size_t count = 0;
    while (!path.empty()) {
        const auto pos = path.find('\\');
        count += pos == 0 ? 0 : 1;
        path.remove_prefix(pos == std::string_view::npos ? path.size() : pos + 1);
    }
    return count;
}

// A subkey path the registry takes: no leading backslash (Windows NT gives
// ERROR_BAD_PATHNAME), each name within Windows' limit and the path no deeper
// than the limit, so that it is refused before anything is made.
long CheckSubkeyPath(std::string_view subkey) {
    if (!subkey.empty() && subkey.front() == '\\') {
        return kErrorBadPathname;
    }
    std::size_t depth = 0;
    while (!subkey.empty()) {
        const auto pos = subkey.find('\\');
        const std::string_view part = subkey.substr(0, pos);
        if (!part.empty() && (++depth > kMaxKeyDepth || !KeyNameFits(part))) {
            return kErrorInvalidParameter;
        }
        subkey.remove_prefix(pos == std::string_view::npos ? subkey.size() : pos + 1);
    }
    return kErrorSuccess;
}

void TouchKey(HiveKey& key, std::uint64_t now) {
    key.changed = true;
    key.modified = now;
}

}  // namespace

Result<MachineRegistry::LoadedHive> MachineRegistry::LoadHive(const std::filesystem::path& file,
                                                              std::string_view relativeRoot) {
    LoadedHive loaded;
    loaded.file = file;
    loaded.relativeRoot = std::string(relativeRoot);
    loaded.stamp = StampOf(file);
    if (!loaded.stamp.exists) {
        loaded.hive.preamble = NewHivePreamble(relativeRoot, "win32");
        loaded.hive.trailer = "\n";
        return loaded;
    }
    auto text = TRY(ReadWholeFile(file));
    auto hive = TRY(ParseWineRegistry(std::make_shared<const std::string>(std::move(text)), file.string()));
    loaded.hive = std::move(hive);
    return loaded;
}

Status MachineRegistry::LoadAll() {
    auto machine = TRY(LoadHive(m_folder.HiveFile(HiveId::Machine), "\\\\Machine"));
    const std::string arch = ArchOf(machine.hive.preamble);
    HiveOf(HiveId::Machine) = std::move(machine);

    auto user = TRY(LoadHive(m_folder.HiveFile(HiveId::User),
                             std::string("\\\\User\\\\") + std::string(kDefaultUserSid)));
    const std::string userRoot = RelativeRootOf(user.hive.preamble);
    const auto sidPos = userRoot.rfind('\\');
    m_userSid = sidPos == std::string::npos ? std::string(kDefaultUserSid) : userRoot.substr(sidPos + 1);
    HiveOf(HiveId::User) = std::move(user);

    HiveOf(HiveId::DefaultUser) =
        TRY(LoadHive(m_folder.HiveFile(HiveId::DefaultUser), "\\\\User\\\\.Default"));

    // A hive made anew takes the architecture of the machine's.
    for (auto& loaded : m_hives) {
        if (!loaded.stamp.exists && !arch.empty()) {
            loaded.hive.preamble = NewHivePreamble(loaded.relativeRoot, arch);
        }
    }
    return {};
}

Result<std::unique_ptr<MachineRegistry>> MachineRegistry::Load(const MachineFolder& folder) {
    std::unique_ptr<MachineRegistry> registry(new MachineRegistry(folder));
    // Reading takes no lock, so a save may replace the hives while they are
    // read: when a journal is there, or a hive changed while the others were
    // read, the hives are read again (a journal first finished under the
    // lock), so the three always come from one moment.
    constexpr int kOptimisticTries = 4;
    for (int attempt = 0; attempt <= kOptimisticTries; ++attempt) {
        std::error_code error;
        const bool journal = std::filesystem::exists(folder.JournalFile(), error);
        std::unique_ptr<FileLock> lock;
        if (journal || attempt == kOptimisticTries) {
            lock = TRY(FileLock::Acquire(folder.LockFile()));
            TRY(FinishJournal(folder.JournalFile()));
        }
        TRY(registry->LoadAll());
        const bool steady =
            std::all_of(registry->m_hives.begin(), registry->m_hives.end(),
                        [](const LoadedHive& loaded) { return StampOf(loaded.file) == loaded.stamp; });
        if (lock || (steady && !std::filesystem::exists(folder.JournalFile(), error))) {
            return registry;
        }
    }
    return registry;
}

HiveKey* MachineRegistry::KeyAt(const Location& location) {
    if (!location.hive) {
        return nullptr;
    }
    return HiveOf(*location.hive).hive.Find(location.path);
}

std::optional<MachineRegistry::Location> MachineRegistry::LinkTarget(const HiveKey& link) const {
    const HiveValue* target = link.FindValue("SymbolicLinkValue");
    if (target == nullptr) {
        return std::nullopt;
    }
    std::string text = Utf16ToUtf8(BytesToUtf16(std::string_view(
        reinterpret_cast<const char*>(target->value.data.data()), target->value.data.size())));
    text = text.substr(0, text.find('\0'));
    std::string_view rest(text);
    constexpr std::string_view kMachine = "\\Registry\\Machine";
    constexpr std::string_view kUser = "\\Registry\\User\\";
    if (rest.size() >= kMachine.size() && EqualsNoCase(rest.substr(0, kMachine.size()), kMachine)) {
        rest.remove_prefix(kMachine.size());
        if (!rest.empty() && rest.front() == '\\') {
            rest.remove_prefix(1);
        }
        return Location{HiveId::Machine, std::string(rest)};
    }
    if (rest.size() >= kUser.size() && EqualsNoCase(rest.substr(0, kUser.size()), kUser)) {
        rest.remove_prefix(kUser.size());
        auto [sid, path] = SplitFirst(rest);
        if (EqualsNoCase(sid, ".Default")) {
            return Location{HiveId::DefaultUser, std::string(path)};
        }
        if (EqualsNoCase(sid, m_userSid)) {
            return Location{HiveId::User, std::string(path)};
        }
    }
    return std::nullopt;
}

std::optional<MachineRegistry::Location> MachineRegistry::Walk(Location start, std::string_view subkey,
                                                               bool create, int depth) {
    if (depth > kMaxLinkDepth || !start.hive) {
        return std::nullopt;
    }
    LoadedHive& loaded = HiveOf(*start.hive);
    HiveKey* key = loaded.hive.Find(start.path);
    if (key == nullptr || (create && DepthOf(start.path) + CountComponents(subkey) > kMaxKeyDepth)) {
        return std::nullopt;
    }
    Location here = start;
    while (!subkey.empty()) {
        auto [part, rest] = SplitFirst(subkey);
        subkey = rest;
        if (part.empty()) {
            continue;
        }
        HiveKey* child = key->FindSubkey(part);
        if (child == nullptr) {
            if (!create || !KeyNameFits(part)) {
                return std::nullopt;
            }
            const std::uint64_t now = FileTimeNow();
            bool created = false;
            child = &key->AddSubkey(part, created);
            TouchKey(*child, now);
            TouchKey(*key, now);
            Record(*here.hive, Change{Change::Kind::CreateKey, JoinPath(here.path, child->name), {}, {}});
        }
        here.path = JoinPath(here.path, child->name);
        key = child;
        if (key->IsLink()) {
            if (auto target = LinkTarget(*key)) {
                return Walk(*target, subkey, create, depth + 1);
            }
        }
    }
    return here;
}

std::optional<MachineRegistry::Location> MachineRegistry::Resolve(RootKey root, std::string_view subkey,
                                                                  bool create) {
    switch (root) {
        case RootKey::LocalMachine:
            return Walk(Location{HiveId::Machine, {}}, subkey, create, 0);
        case RootKey::CurrentUser:
            return Walk(Location{HiveId::User, {}}, subkey, create, 0);
        case RootKey::ClassesRoot: {
            auto base = Walk(Location{HiveId::Machine, {}}, kClassesRootPath, create, 0);
            return base ? Walk(*base, subkey, create, 0) : std::nullopt;
        }
        case RootKey::CurrentConfig: {
            auto base = Walk(Location{HiveId::Machine, {}}, kCurrentConfigPath, create, 0);
            return base ? Walk(*base, subkey, create, 0) : std::nullopt;
        }
        case RootKey::Users: {
            auto [first, rest] = SplitFirst(subkey);
            while (first.empty() && !rest.empty()) {
                std::tie(first, rest) = SplitFirst(rest);
            }
            if (first.empty()) {
                return Location{std::nullopt, {}};
            }
            if (EqualsNoCase(first, ".Default")) {
                return Walk(Location{HiveId::DefaultUser, {}}, rest, create, 0);
            }
            if (EqualsNoCase(first, m_userSid)) {
                return Walk(Location{HiveId::User, {}}, rest, create, 0);
            }
            return std::nullopt;
        }
        default:
            return std::nullopt;
    }
}

RegHandle MachineRegistry::NewHandle(Location location) {
    const RegHandle handle = m_nextHandle++;
    m_handles.emplace(handle, std::move(location));
    return handle;
}

const MachineRegistry::Location* MachineRegistry::Handle(RegHandle key) const {
    auto it = m_handles.find(key);
    return it == m_handles.end() ? nullptr : &it->second;
}

void MachineRegistry::Record(HiveId hive, Change change) {
    HiveOf(hive).changes.push_back(std::move(change));
}

long MachineRegistry::OpenKey(RootKey root, std::string_view subkey, RegAccess /*access*/, RegHandle& out) {
    out = kNoHandle;
    if (root == RootKey::None || root == RootKey::DynData || root == RootKey::PerformanceData) {
        return kErrorInvalidHandle;
    }
    if (!subkey.empty() && subkey.front() == '\\') {
        return kErrorBadPathname;
    }
    auto location = Resolve(root, subkey, false);
    if (!location) {
        return kErrorFileNotFound;
    }
    out = NewHandle(std::move(*location));
    return kErrorSuccess;
}

long MachineRegistry::CreateKey(RootKey root, std::string_view subkey, RegHandle& out) {
    out = kNoHandle;
    if (root == RootKey::None || root == RootKey::DynData || root == RootKey::PerformanceData) {
        return kErrorInvalidHandle;
    }
    if (const long rc = CheckSubkeyPath(subkey); rc != kErrorSuccess) {
        return rc;
    }
    auto location = Resolve(root, subkey, true);
    if (!location) {
        return kErrorAccessDenied;
    }
    out = NewHandle(std::move(*location));
    return kErrorSuccess;
}

long MachineRegistry::CloseKey(RegHandle key) {
    return m_handles.erase(key) == 1 ? kErrorSuccess : kErrorInvalidHandle;
}

long MachineRegistry::QueryValue(RegHandle key, std::string_view name, RegValue& out) {
    const Location* location = Handle(key);
    if (location == nullptr) {
        return kErrorInvalidHandle;
    }
    HiveKey* hiveKey = KeyAt(*location);
    if (hiveKey == nullptr) {
        return kErrorFileNotFound;
    }
    const HiveValue* value = hiveKey->FindValue(name);
    if (value == nullptr) {
        return kErrorFileNotFound;
    }
    out = value->value;
    return kErrorSuccess;
}

long MachineRegistry::SetValue(RegHandle key, std::string_view name, const RegValue& value) {
    const Location* location = Handle(key);
    if (location == nullptr) {
        return kErrorInvalidHandle;
    }
    HiveKey* hiveKey = KeyAt(*location);
    if (hiveKey == nullptr) {
        return location->hive ? kErrorFileNotFound : kErrorAccessDenied;
    }
    RegValue stored = value;
    // As Windows NT does: a string whose count left out the terminating NUL gets one.
    const auto& d = stored.data;
    if (IsStringType(stored.type) && !d.empty() && d.size() % 2 == 0 &&
        (d[d.size() - 1] != 0 || d[d.size() - 2] != 0)) {
        stored.data.push_back(0);
        stored.data.push_back(0);
    }
    TouchKey(*hiveKey, FileTimeNow());
    Record(*location->hive, Change{Change::Kind::SetValue, location->path, std::string(name), stored});
    hiveKey->SetValue(name, std::move(stored));
    return kErrorSuccess;
}

long MachineRegistry::DeleteValue(RegHandle key, std::string_view name) {
    const Location* location = Handle(key);
    if (location == nullptr) {
        return kErrorInvalidHandle;
    }
    HiveKey* hiveKey = KeyAt(*location);
    if (hiveKey == nullptr || !hiveKey->DeleteValue(name)) {
        return kErrorFileNotFound;
    }
    TouchKey(*hiveKey, FileTimeNow());
    Record(*location->hive, Change{Change::Kind::DeleteValue, location->path, std::string(name), {}});
    return kErrorSuccess;
}

long MachineRegistry::DeleteSubKey(RegHandle key, std::string_view name) {
    const Location* location = Handle(key);
    if (location == nullptr) {
        return kErrorInvalidHandle;
    }
    if (name.empty()) {
        return kErrorAccessDenied;
    }
    // The name may be a path below the key; the last key on it goes.
    auto target = Walk(*location, name, false, 0);
    if (!target || !target->hive || target->path.empty()) {
        return kErrorFileNotFound;
    }
    Hive& hive = HiveOf(*target->hive).hive;
    HiveKey* victim = hive.Find(target->path);
    if (victim == nullptr || victim->parent == nullptr) {
        return kErrorFileNotFound;
    }
    if (!m_deletesSubtrees && !victim->subkeys.empty()) {
        return kErrorAccessDenied;
    }
    HiveKey& parent = *victim->parent;
    const std::string victimName = victim->name;
    parent.DeleteSubkey(victimName);
    TouchKey(parent, FileTimeNow());
    Record(*target->hive, Change{Change::Kind::DeleteKey, parent.Path(), victimName, {}});
    return kErrorSuccess;
}

long MachineRegistry::QueryInfoKey(RegHandle key, RegKeyInfo& out) {
    const Location* location = Handle(key);
    if (location == nullptr) {
        return kErrorInvalidHandle;
    }
    out = RegKeyInfo{};
    if (!location->hive) {
        out.subkeyCount = 2;
        out.longestSubkeyName = static_cast<std::uint32_t>(std::max<std::size_t>(8, m_userSid.size()));
        return kErrorSuccess;
    }
    HiveKey* hiveKey = KeyAt(*location);
    if (hiveKey == nullptr) {
        return kErrorFileNotFound;
    }
    out.subkeyCount = static_cast<std::uint32_t>(hiveKey->subkeys.size());
    for (const auto& sub : hiveKey->subkeys) {
        out.longestSubkeyName =
            std::max(out.longestSubkeyName, static_cast<std::uint32_t>(Utf8ToUtf16(sub->name).size()));
    }
    out.valueCount = static_cast<std::uint32_t>(hiveKey->Values().size());
    for (const auto& value : hiveKey->Values()) {
        out.longestValueName =
            std::max(out.longestValueName, static_cast<std::uint32_t>(Utf8ToUtf16(value.name).size()));
        out.longestValueData =
            std::max(out.longestValueData, static_cast<std::uint32_t>(value.value.data.size()));
    }
    return kErrorSuccess;
}

long MachineRegistry::EnumKey(RegHandle key, std::uint32_t index, std::string& name) {
    const Location* location = Handle(key);
    if (location == nullptr) {
        return kErrorInvalidHandle;
    }
    if (!location->hive) {
        if (index >= 2) {
            return kErrorNoMoreItems;
        }
        name = index == 0 ? std::string(".Default") : m_userSid;
        return kErrorSuccess;
    }
    HiveKey* hiveKey = KeyAt(*location);
    if (hiveKey == nullptr) {
        return kErrorFileNotFound;
    }
    if (index >= hiveKey->subkeys.size()) {
        return kErrorNoMoreItems;
    }
    name = hiveKey->subkeys[index]->name;
    return kErrorSuccess;
}

long MachineRegistry::EnumValue(RegHandle key, std::uint32_t index, std::string& name, RegValue& value) {
    const Location* location = Handle(key);
    if (location == nullptr) {
        return kErrorInvalidHandle;
    }
    HiveKey* hiveKey = location->hive ? KeyAt(*location) : nullptr;
    if (hiveKey == nullptr) {
        return location->hive ? kErrorFileNotFound : kErrorNoMoreItems;
    }
    if (index >= hiveKey->Values().size()) {
        return kErrorNoMoreItems;
    }
    name = hiveKey->Values()[index].name;
    value = hiveKey->Values()[index].value;
    return kErrorSuccess;
}

bool MachineRegistry::HasUnsavedChanges() const {
    for (const auto& loaded : m_hives) {
        if (!loaded.changes.empty()) {
            return true;
        }
    }
    return false;
}

void MachineRegistry::Replay(Hive& hive, const Change& change, std::uint64_t now) {
    switch (change.kind) {
        case Change::Kind::CreateKey:
            hive.Create(change.path, now);
            break;
        case Change::Kind::SetValue: {
            HiveKey& key = hive.Create(change.path, now);
            key.SetValue(change.name, change.value);
            TouchKey(key, now);
            break;
        }
        case Change::Kind::DeleteValue:
            if (HiveKey* key = hive.Find(change.path); key != nullptr && key->DeleteValue(change.name)) {
                TouchKey(*key, now);
            }
            break;
        case Change::Kind::DeleteKey:
            if (HiveKey* key = hive.Find(change.path); key != nullptr && key->DeleteSubkey(change.name)) {
                TouchKey(*key, now);
            }
            break;
    }
}

Result<TextPieces> MachineRegistry::MergedText(HiveId id) {
    LoadedHive& loaded = HiveOf(id);
    const FileStamp onDisk = StampOf(loaded.file);
    if (!(onDisk == loaded.stamp)) {
        // Another process saved this hive since it was read: take its file and
        // make our changes again on top of it.
        auto fresh = TRY(LoadHive(loaded.file, loaded.relativeRoot));
        const std::uint64_t now = FileTimeNow();
        for (const auto& change : loaded.changes) {
            Replay(fresh.hive, change, now);
        }
        loaded.hive = std::move(fresh.hive);
    }
    return SerializeWineRegistryPieces(loaded.hive);
}

Status MachineRegistry::Save() {
    return Save({}, {});
}

Status MachineRegistry::Save(const FolderChanges& folders, const std::vector<FileReplacement>& others) {
    if (!HasUnsavedChanges() && folders.make.empty() && folders.remove.empty() && others.empty()) {
        return {};
    }
    if (auto server = m_folder.RunningWineServer()) {
        return Fail(*server);
    }
    auto lock = TRY(FileLock::Acquire(m_folder.LockFile()));
    // A save killed part way is finished first, so that what is merged below
    // is the whole of it.
    TRY(FinishJournal(m_folder.JournalFile()));
    // A read-only hive stays as it is: nothing is written, not even the
    // other hives, so the machine is not left half changed.
    for (const auto& loaded : m_hives) {
        const auto attributes = ReadHostAttributes(loaded.file);
        if (!loaded.changes.empty() && attributes && (*attributes & kAttrReadOnly) != 0) {
            return Fail(loaded.file.string() + " is read-only: nothing was written");
        }
    }
    std::vector<FileReplacement> files;
    std::vector<HiveId> written;
    for (HiveId id : {HiveId::Machine, HiveId::User, HiveId::DefaultUser}) {
        if (!HiveOf(id).changes.empty()) {
            TextPieces text = TRY(MergedText(id));
            files.push_back(FileReplacement{HiveOf(id).file, std::move(text)});
            written.push_back(id);
        }
    }
    files.insert(files.end(), others.begin(), others.end());
    TRY(ReplaceFilesTogether(m_folder.JournalFile(), files, folders));
    for (HiveId id : written) {
        HiveOf(id).stamp = StampOf(HiveOf(id).file);
        HiveOf(id).changes.clear();
    }
    return {};
}

}  // namespace glyphmoor
