#pragma once

#include "engine/formats/archive.h"

#include <string>
#include <vector>

namespace vantoro::test {

/// Gives prepared answers in turn, then none; remembers what it was asked.
class ScriptedPasswords final : public PasswordProvider {
public:
    explicit ScriptedPasswords(std::vector<std::string> prepared) : m_answers(std::move(prepared)) {}
    Result<Secret> password(unsigned attempt) override
    {
        attempts.push_back(attempt);
        if (attempts.size() > m_answers.size())
            return Error{ErrorCode::PasswordNeeded, "test"};
        return Secret(m_answers[attempts.size() - 1]);
    }
    std::vector<unsigned> attempts;

private:
    std::vector<std::string> m_answers;
};

/// Volumes that lie in memory.
class MemoryVolumes final : public VolumeProvider {
public:
    void add(const std::string& name, std::string_view content) { m_volumes.emplace_back(name, content); }
    void remove(const std::string& name)
    {
        std::erase_if(m_volumes, [&](const auto& volume) { return volume.first == name; });
    }
    Result<SourcePtr> openVolume(std::string_view name) override
    {
        for (const auto& [known, content] : m_volumes) {
            if (known == name)
                return memorySource(content);
        }
        return Error{ErrorCode::MissingVolume, "test"};
    }

private:
    std::vector<std::pair<std::string, std::string>> m_volumes;
};

}
