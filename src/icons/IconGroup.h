// IconGroup: the store of one of the catalogue's seven groups, the list the
// Icons & Cursors page shows for it.
//
// Entries are kept in the catalogue table's order. Themes and the command
// line reach an entry by its key (SystemIconEntry::Key) within the group;
// views reach it by position. A view that shows the group registers a refresh
// handler and redraws when the group says it changed.
#pragma once

#include "icons/IconLocation.h"
#include "icons/SystemIconEntry.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace glyphmoor {

class IconGroup {
public:
    IconGroup(int number, std::string_view name) : m_number(number), m_name(name) {}

    // 1 to 7, the number of the group's tab; and its name ("Desktop Icons"),
    // the first half of every entry's stable key.
    [[nodiscard]] int Number() const { return m_number; }
    [[nodiscard]] const std::string& Name() const { return m_name; }

    [[nodiscard]] std::size_t Count() const { return m_entries.size(); }
    [[nodiscard]] bool Empty() const { return m_entries.empty(); }
    // Positions run from 0 to Count() - 1 in table order.
    [[nodiscard]] const SystemIconEntry& At(std::size_t position) const { return m_entries.at(position); }
    [[nodiscard]] SystemIconEntry& At(std::size_t position) { return m_entries.at(position); }
    [[nodiscard]] const std::vector<SystemIconEntry>& Entries() const { return m_entries; }
    [[nodiscard]] std::string_view KeyAt(std::size_t position) const { return At(position).Key(); }
    [[nodiscard]] IconLocation LocationAt(std::size_t position) const { return At(position).Current(); }

    // The entry with that key, compared without regard to case as profile
    // files compare key names; the first one when two match. nullptr when the
    // group holds none.
    [[nodiscard]] SystemIconEntry* Find(std::string_view key);
    [[nodiscard]] const SystemIconEntry* Find(std::string_view key) const;
    // Gives the entry with that key a new current icon. A key the group does
    // not hold changes nothing and gives false: a theme naming a file type
    // this machine has not registered loads without it.
    bool SetByKey(std::string_view key, const IconLocation& location);

    void Clear() { m_entries.clear(); }
    void Add(SystemIconEntry entry) { m_entries.push_back(std::move(entry)); }

    // Says that a batch of changes is done: the registered view redraws.
    void Refresh() const;
    void SetRefreshHandler(std::function<void(const IconGroup&)> handler) {
        m_onRefresh = std::move(handler);
    }

private:
    int m_number;
    std::string m_name;
    std::vector<SystemIconEntry> m_entries;
    std::function<void(const IconGroup&)> m_onRefresh;
};

}  // namespace glyphmoor
