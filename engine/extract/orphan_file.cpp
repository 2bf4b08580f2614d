#include "engine/extract/orphan_file.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <optional>
#include <string_view>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vantoro {

namespace {

constexpr std::size_t kMostBytes = 1 << 20;
constexpr int kMostLockAttempts = 40;
constexpr auto kLockPause = std::chrono::milliseconds(10);

void makeParents(const std::string& path)
{
    for (auto slash = path.find('/', 1); slash != std::string::npos; slash = path.find('/', slash + 1))
        ::mkdir(path.substr(0, slash).c_str(), 0700);
}

std::string readAll(int fd)
{
    std::string text;
    std::array<char, 4096> block;
    while (text.size() < kMostBytes) {
        const auto count = ::pread(fd, block.data(), block.size(), static_cast<off_t>(text.size()));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            break;
        text.append(block.data(), static_cast<std::size_t>(count));
    }
    return text;
}

bool writeAll(int fd, std::string_view text, off_t position)
{
    while (!text.empty()) {
        const auto count = ::pwrite(fd, text.data(), text.size(), position);
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return false;
        text.remove_prefix(static_cast<std::size_t>(count));
        position += count;
    }
    return true;
}

std::vector<std::string> linesOf(const std::string& text)
{
    std::vector<std::string> lines;
    for (std::size_t at = 0; at < text.size();) {
        const auto end = std::min(text.find('\n', at), text.size());
        if (end > at)
            lines.push_back(text.substr(at, end - at));
        at = end + 1;
    }
    return lines;
}

}

/// The file, for this process alone; without it where that takes too long, since a stopped process may hold it.
class OrphanFile::Locked {
public:
    Locked(const std::string& path, int flags) : m_file(::open(path.c_str(), flags | O_CLOEXEC | O_NOFOLLOW, 0600))
    {
        static std::atomic<bool> isStuck{false}; // waited for once in a process, not every time
        const int most = isStuck.load() ? 0 : kMostLockAttempts;
        for (int attempt = 0; m_file && ::flock(m_file.get(), LOCK_EX | LOCK_NB) != 0; ++attempt) {
            isStuck.store(attempt == most);
            if (attempt == most)
                m_file.reset();
            else
                std::this_thread::sleep_for(kLockPause);
        }
    }
    ~Locked()
    {
        if (m_file)
            ::flock(m_file.get(), LOCK_UN);
    }
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;
    explicit operator bool() const { return static_cast<bool>(m_file); }
    int get() const { return m_file.get(); }

private:
    UniqueFd m_file;
};

void OrphanFile::remember(const std::string& path)
{
    if (path.find('\n') != std::string::npos)
        return; // would list something else
    const std::lock_guard lock(m_mutex);
    std::optional<Locked> file(std::in_place, m_path, O_RDWR | O_CREAT);
    if (!*file) {
        makeParents(m_path);
        file.emplace(m_path, O_RDWR | O_CREAT);
    }
    const auto end = *file ? ::lseek(file->get(), 0, SEEK_END) : -1;
    if (end >= 0)
        (void)writeAll(file->get(), path + "\n", end); // the extraction matters more than the sweep after a crash
}

void OrphanFile::settle()
{
    const std::lock_guard lock(m_mutex);
    const UniqueFd file(::open(m_path.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW));
    if (file)
        ::sync_file_range(file.get(), 0, 0, SYNC_FILE_RANGE_WRITE); // started, not waited for
}

void OrphanFile::forget(const std::string& path)
{
    const std::lock_guard lock(m_mutex);
    const Locked file(m_path, O_RDWR);
    if (!file)
        return;
    // One line only: another process may have listed the same path for a new folder.
    auto lines = linesOf(readAll(file.get()));
    const auto line = std::find(lines.begin(), lines.end(), path);
    if (line == lines.end())
        return;
    lines.erase(line);
    std::string text;
    for (const auto& kept : lines)
        text.append(kept).append("\n");
    if (writeAll(file.get(), text, 0))
        (void)!::ftruncate(file.get(), static_cast<off_t>(text.size()));
}

void OrphanFile::sweep()
{
    std::vector<std::string> paths;
    if (const Locked file(m_path, O_RDWR); file)
        paths = linesOf(readAll(file.get()));
    for (const auto& path : sweepOrphans(paths))
        forget(path);
}

std::string defaultOrphanFilePath()
{
    const char* const state = std::getenv("XDG_STATE_HOME");
    if (state && state[0] == '/')
        return std::string(state) + "/vantoro/unfinished";
    const char* const home = std::getenv("HOME");
    return home && home[0] == '/' ? std::string(home) + "/.local/state/vantoro/unfinished" : std::string();
}

}
