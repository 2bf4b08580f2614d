#pragma once

#include <QString>

#include <string>
#include <string_view>
#include <vector>

namespace vantoro {

/// Makes the empty folders and files of a skeleton, only ever beneath its folder: names are followed part by part from
/// an open handle, never through a link, and ".." and NUL are refused. The way to the last item stays open, so that the
/// next one beside it costs one system call. The files are hard links to the first of them, where the file system has
/// such: making an inode for each takes twice the time, and many times that soon after others were removed.
class SkeletonWriter {
public:
    /// The folder exists.
    explicit SkeletonWriter(const QString& folder);
    ~SkeletonWriter();
    SkeletonWriter(const SkeletonWriter&) = delete;
    SkeletonWriter& operator=(const SkeletonWriter&) = delete;

    /// UTF-8, parts joined by '/'. True when there is such a folder now, or a file: what is there already stays.
    bool makeFolder(std::string_view path);
    bool makeFile(std::string_view path);

private:
    struct Step {
        std::size_t end; // of its part of m_path
        int handle;
    };
    bool enter(std::string_view folder);
    int enterPart(const char* name);
    bool makeEmpty(const char* name);
    bool linkToFirst(const char* name);
    void keepAsFirst(const char* name);
    int here() const { return m_steps.empty() ? m_root : m_steps.back().handle; }
    void leaveUntil(std::size_t depth);

    int m_root;
    const std::size_t m_longest; // bytes of a path that is still reachable from "/"
    std::string m_path; // of the last step
    std::vector<Step> m_steps;
    std::string m_name;
    int m_firstFolder = -1; // of the file that the others are linked to
    std::string m_firstName;
    bool m_hasLinks = true;
};

}
