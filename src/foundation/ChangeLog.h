// ChangeLog: a registry and a system that pass every call on to the real
// ones and note each change they carry, in order, one line each, so that a
// command can say what an operation changed and sent, on Windows as on a
// machine folder.
//
// Lines, fields separated by a TAB:
//   write         PATH  NAME  DATA   a value set (texts as they are, DWORDs in
//                                    decimal, other data as lowercase hex)
//   delete-value  PATH  NAME
//   delete-key    PATH  SUBKEY
//   send          CALL               a system call as RecordingSystem notes it
// Failed writes are not noted: they changed nothing.
#pragma once

#include "foundation/RegistryStore.h"
#include "foundation/System.h"

#include <map>
#include <string>
#include <vector>

namespace glyphmoor {

class ChangeLog {
public:
    [[nodiscard]] const std::vector<std::string>& Lines() const { return m_lines; }
    void Add(std::string line) { m_lines.push_back(std::move(line)); }

private:
    std::vector<std::string> m_lines;
};

// The RegistryPath text of a root and subkey ("HKEY_CURRENT_USER\Control Panel").
std::string RegistryPathOf(RootKey root, std::string_view subkey);
// A value's data as a write line shows it.
std::string DescribeRegValue(const RegValue& value);

class LoggingRegistry final : public RegistryStore {
public:
    LoggingRegistry(RegistryStore& inner, ChangeLog& log) : m_inner(inner), m_log(log) {}

    long OpenKey(RootKey root, std::string_view subkey, RegAccess access, RegHandle& out) override;
    long CreateKey(RootKey root, std::string_view subkey, RegHandle& out) override;
    long CloseKey(RegHandle key) override;
    long QueryValue(RegHandle key, std::string_view name, RegValue& out) override;
    long SetValue(RegHandle key, std::string_view name, const RegValue& value) override;
    long DeleteValue(RegHandle key, std::string_view name) override;
    long DeleteSubKey(RegHandle key, std::string_view name) override;
    long QueryInfoKey(RegHandle key, RegKeyInfo& out) override;
    long EnumKey(RegHandle key, std::uint32_t index, std::string& name) override;
    long EnumValue(RegHandle key, std::uint32_t index, std::string& name, RegValue& value) override;

private:
    [[nodiscard]] std::string PathOf(RegHandle key) const;

    RegistryStore& m_inner;
    ChangeLog& m_log;
    std::map<RegHandle, std::string> m_paths;
};

class LoggingSystem final : public System {
public:
    LoggingSystem(System& inner, ChangeLog& log) : m_inner(inner), m_log(log) {
        m_notes.SetOpensDocuments(false);
    }

    void BroadcastSettingChange(std::uint32_t wParam, std::optional<std::string> section) override;
    bool SystemParametersInfo(std::uint32_t action, std::uint32_t uiParam, const SpiParam& pvParam,
                              std::uint32_t winIni) override;
    void EnableShutdownPrivilege() override;
    void ExitWindows(std::uint32_t flags, std::uint32_t reserved) override;
    bool OpenDocument(std::string_view pathOrAddress) override;
    void RunProgram(std::string_view commandLine, int showCommand) override;
    void ShellExecuteVerb(std::string_view verb, std::string_view file, std::string_view parameters,
                          int showCommand) override;
    void OpenHelp(std::string_view helpFile, std::uint32_t command, std::string_view data) override;
    [[nodiscard]] int ColourDepth() const override { return m_inner.ColourDepth(); }
    [[nodiscard]] ScreenSize Screen() const override { return m_inner.Screen(); }

private:
    // Moves what m_notes noted of the last call into the log.
    void Note();

    System& m_inner;
    ChangeLog& m_log;
    // Only to write each call's line the way RecordingSystem writes it.
    RecordingSystem m_notes;
    std::size_t m_noted = 0;
};

}  // namespace glyphmoor
