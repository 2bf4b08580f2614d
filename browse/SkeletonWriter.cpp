#include "browse/SkeletonWriter.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vantoro {
namespace {

constexpr std::size_t kDeepest = 128; // folders open at once
constexpr int kFolderFlags = O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;

bool isUsable(std::string_view part)
{
    return !part.empty() && part != "." && part != ".." && part.find('\0') == std::string_view::npos;
}

bool isKind(int folder, const char* name, mode_t kind)
{
    struct stat status = {};
    return ::fstatat(folder, name, &status, AT_SYMLINK_NOFOLLOW) == 0 && (status.st_mode & S_IFMT) == kind;
}

std::string_view parentOf(std::string_view path)
{
    const auto slash = path.rfind('/');
    return slash == std::string_view::npos ? std::string_view() : path.substr(0, slash);
}

std::string_view lastPart(std::string_view path) { return path.substr(path.rfind('/') + 1); }

}

SkeletonWriter::SkeletonWriter(const QString& folder)
    : m_root(::open(QFile::encodeName(folder).constData(), kFolderFlags))
    , m_longest(static_cast<std::size_t>(std::max<qsizetype>(0, PATH_MAX - 2 - QFile::encodeName(folder).size())))
{
}

SkeletonWriter::~SkeletonWriter()
{
    leaveUntil(0);
    for (const int handle : {m_firstFolder, m_root}) {
        if (handle >= 0)
            ::close(handle);
    }
}

bool SkeletonWriter::makeFolder(std::string_view path)
{
    const auto name = lastPart(path);
    if (!isUsable(name) || !enter(parentOf(path)))
        return false;
    m_name = name;
    return ::mkdirat(here(), m_name.c_str(), 0700) == 0 || (errno == EEXIST && isKind(here(), m_name.c_str(), S_IFDIR));
}

bool SkeletonWriter::makeFile(std::string_view path)
{
    const auto name = lastPart(path);
    if (!isUsable(name) || path.size() > m_longest || !enter(parentOf(path)))
        return false;
    m_name = name;
    return makeEmpty(m_name.c_str()) || (errno == EEXIST && isKind(here(), m_name.c_str(), S_IFREG));
}

/// mknodat() makes a file in one call; file systems that refuse it get two.
bool SkeletonWriter::makeEmpty(const char* name)
{
    if (linkToFirst(name))
        return true;
    if (errno == EEXIST)
        return false;
    bool isMade = ::mknodat(here(), name, S_IFREG | 0600, 0) == 0;
    if (!isMade && (errno == EPERM || errno == EOPNOTSUPP || errno == ENOSYS)) {
        const int file = ::openat(here(), name, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
        isMade = file >= 0 && ::close(file) == 0;
    }
    if (isMade && m_hasLinks)
        keepAsFirst(name);
    return isMade;
}

bool SkeletonWriter::linkToFirst(const char* name)
{
    errno = 0;
    if (!m_hasLinks || m_firstFolder < 0)
        return false;
    if (::linkat(m_firstFolder, m_firstName.c_str(), here(), name, 0) == 0)
        return true;
    // EMLINK: that file has all the links it may have, and the next one takes over.
    m_hasLinks = errno != EPERM && errno != EOPNOTSUPP && errno != ENOSYS;
    return false;
}

void SkeletonWriter::keepAsFirst(const char* name)
{
    if (m_firstFolder >= 0)
        ::close(m_firstFolder);
    m_firstFolder = ::fcntl(here(), F_DUPFD_CLOEXEC, 0);
    m_firstName = name;
}

bool SkeletonWriter::enter(std::string_view folder)
{
    if (m_root < 0 || folder.size() > m_longest)
        return false;
    const auto differs = static_cast<std::size_t>(std::ranges::mismatch(folder, m_path).in1 - folder.begin());
    std::size_t shared = 0;
    while (shared < m_steps.size() && m_steps[shared].end <= differs
           && (m_steps[shared].end == folder.size() || folder[m_steps[shared].end] == '/'))
        ++shared;
    leaveUntil(shared);
    auto at = m_steps.empty() ? 0 : m_steps.back().end + 1;
    while (at < folder.size()) {
        const auto end = std::min(folder.find('/', at), folder.size());
        m_name = folder.substr(at, end - at);
        const int handle = m_steps.size() < kDeepest && isUsable(m_name) ? enterPart(m_name.c_str()) : -1;
        if (handle < 0)
            return false;
        m_path.append(m_path.empty() ? "" : "/").append(m_name);
        m_steps.push_back({end, handle});
        at = end + 1;
    }
    return true;
}

int SkeletonWriter::enterPart(const char* name)
{
    const int handle = ::openat(here(), name, kFolderFlags);
    if (handle >= 0 || errno != ENOENT || ::mkdirat(here(), name, 0700) != 0)
        return handle;
    return ::openat(here(), name, kFolderFlags);
}

void SkeletonWriter::leaveUntil(std::size_t depth)
{
    while (m_steps.size() > depth) {
        ::close(m_steps.back().handle);
        m_steps.pop_back();
    }
    m_path.resize(m_steps.empty() ? 0 : m_steps.back().end);
}

}
