#pragma once

#include "engine/io/bytes.h"
#include "engine/write/source_list.h"

#include <memory>

namespace vantoro {

/// Neighbours of the list whose small files are read whole, by another thread than the one that writes them.
/// Reusable; keeps its memory.
class SourceBatch {
public:
    struct Row {
        const SourceItem* item = nullptr;
        std::optional<Error> error; ///< it could not be opened or read
        bool isRead = false; ///< else a folder or a link, or a file left to the writer as too large
        std::uint64_t size = 0; ///< of the file when it was opened
        ConstBytes data; ///< fewer bytes than `size` when the file became shorter meanwhile
    };

    void clear();
    void add(const SourceItem& item);
    /// Worth a job of its own.
    bool isFull() const;
    bool isEmpty() const { return m_rows.empty(); }
    /// Opens, reads and closes. Ends early when asked to stop.
    void read(const CancelToken& cancel);
    const std::vector<Row>& rows() const { return m_rows; }

private:
    std::vector<Row> m_rows;
    std::size_t m_wanted = 0; // bytes of all small files
    std::size_t m_capacity = 0;
    std::unique_ptr<std::byte[]> m_data;
};

}
