#include "engine/extract/file_writer.h"

#include "engine/extract/safe_name.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace vantoro {

namespace {

constexpr unsigned kMostNumbers = 1'000'000;
constexpr mode_t kFileMode = 0666;
constexpr std::uint64_t kLargeFile = 1 << 20;
constexpr std::uint64_t kReserveAhead = 16 << 20; ///< the declared size is only a claim
constexpr std::size_t kShortName = 140; ///< what encrypting file systems leave of 255

bool isNameRefused(int reason) { return reason == EINVAL || reason == EILSEQ || reason == ENAMETOOLONG; }

}

Result<void> FileWriter::open(FilePlan&& plan)
{
    m_plan = std::move(plan);
    m_size = 0;
    m_reserved = 0;
    m_endsInHole = false;
    TRY(create());
    if (!m_plan.attributes.empty() || !m_settings.originUrl.empty())
        setAttributes();
    return {};
}

Result<void> FileWriter::create()
{
    const auto mode = m_plan.traits.hasMode ? (m_plan.traits.mode | 0600U) : kFileMode;
    for (unsigned attempt = 0; attempt < kMostNumbers; ++attempt) {
        m_file = UniqueFd(::openat(m_plan.folder->get(), m_plan.name.c_str(),
                                   O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode));
        if (m_file)
            return {};
        if (errno == EEXIST)
            m_plan.name = m_placer.takeNextName(m_plan.node);
        else if (errno == ENAMETOOLONG && m_plan.name.size() > kShortName)
            m_plan.name = m_placer.shortenName(m_plan.node, kShortName);
        else if (isNameRefused(errno))
            return Error{ErrorCode::UnsafeName, "create a file", errno};
        else
            return destinationError(errno, "create a file");
    }
    return Error{ErrorCode::WriteFailed, "no free name for a file", EEXIST};
}

void FileWriter::setAttributes()
{
    for (const auto& attribute : m_plan.attributes)
        ::fsetxattr(m_file.get(), attribute.name.c_str(), attribute.value.data(), attribute.value.size(), 0);
    const auto& url = m_settings.originUrl;
    if (!url.empty())
        ::fsetxattr(m_file.get(), "user.xdg.origin.url", url.data(), url.size(), 0);
}

Result<void> FileWriter::reserve(std::uint64_t upTo)
{
    if (!m_settings.reservesSpace || !m_plan.size || *m_plan.size <= m_reserved || upTo < kLargeFile
        || upTo <= m_reserved)
        return {};
    const auto from = std::max(m_reserved, m_size);
    const auto end = std::min(*m_plan.size, upTo + kReserveAhead);
    if (end <= from)
        return {};
    m_reserved = end;
    const int failed
        = ::fallocate(m_file.get(), FALLOC_FL_KEEP_SIZE, static_cast<off_t>(from), static_cast<off_t>(end - from));
    if (failed != 0 && (errno == ENOSPC || errno == EDQUOT) && from >= upTo)
        return destinationError(errno, "fallocate");
    return {}; // otherwise a help that this file system does not give
}

Result<void> FileWriter::write(ConstBytes block)
{
    TRY(reserve(m_size + block.size()));
    while (!block.empty()) {
        const auto count = ::write(m_file.get(), block.data(), block.size());
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return destinationError(errno, "write");
        const auto done = static_cast<std::size_t>(count);
        block = block.subspan(done);
        m_size += done;
        m_endsInHole = false;
        TRY(m_guard.wrote(done));
    }
    return {};
}

Result<void> FileWriter::hole(std::uint64_t length)
{
    if (length == 0)
        return {};
    if (length > std::uint64_t{1} << 62 || ::lseek(m_file.get(), static_cast<off_t>(length), SEEK_CUR) < 0)
        return Error{ErrorCode::WriteFailed, "a hole larger than the file system takes", EFBIG};
    m_size += length;
    m_endsInHole = true;
    return {};
}

Result<void> FileWriter::complete()
{
    const bool overshot = m_reserved > m_size; // what was claimed and did not come
    if ((m_endsInHole || overshot) && ::ftruncate(m_file.get(), static_cast<off_t>(m_size)) != 0 && m_endsInHole)
        return destinationError(errno, "ftruncate");
    if (m_plan.traits.modified) {
        const timespec accessed = m_plan.traits.accessed.value_or(timespec{0, UTIME_OMIT});
        const timespec times[2] = {accessed, *m_plan.traits.modified};
        (void)!::futimens(m_file.get(), times); // some file systems keep no dates
    }
    return {};
}

Result<void> FileWriter::seal()
{
    TRY(complete());
    return m_file.close();
}

Result<void> FileWriter::finish()
{
    if (const auto sealed = seal(); !sealed) {
        (void)unlink();
        return sealed;
    }
    m_placed.push_back(m_plan.node);
    return {};
}

Result<void> FileWriter::unlink()
{
    const int folder = m_plan.folder->get();
    const auto* const name = m_plan.name.c_str();
    if (::unlinkat(folder, name, 0) != 0 && errno != ENOENT
        && ::unlinkat(folder, name, 0) != 0) // an interrupted call is worth a second try
        return destinationError(errno, "remove a damaged file");
    return {};
}

Result<void> FileWriter::discard()
{
    if (!m_file)
        return {};
    if (!m_settings.keepsBroken) {
        m_file.reset();
        return unlink();
    }
    TRY(seal());
    m_placer.setKeptBroken(m_plan.node, TRY(renameToDamaged(m_plan.folder->get(), m_plan.name)));
    return {};
}

void FileWriter::abandon()
{
    if (!m_file)
        return;
    m_file.reset();
    (void)unlink();
}

}
