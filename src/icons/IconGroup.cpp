#include "icons/IconGroup.h"

#include "foundation/TextEncoding.h"

#include <algorithm>

namespace glyphmoor {

SystemIconEntry* IconGroup::Find(std::string_view key) {
    const auto found = std::ranges::find_if(
        m_entries, [key](const SystemIconEntry& e) { return EqualsNoCase(e.Key(), key); });
    return found == m_entries.end() ? nullptr : &*found;
}

const SystemIconEntry* IconGroup::Find(std::string_view key) const {
    return const_cast<IconGroup*>(this)->Find(key);
}

bool IconGroup::SetByKey(std::string_view key, const IconLocation& location) {
    SystemIconEntry* entry = Find(key);
    if (entry == nullptr) {
        return false;
    }
    entry->currentFile = location.file;
    entry->currentIndex = location.index;
    return true;
}

void IconGroup::Refresh() const {
    if (m_onRefresh) {
        m_onRefresh(*this);
    }
}

}  // namespace glyphmoor
