#pragma once

#include "engine/formats/zip/zip.h"
#include "tests/support/archive_contents.h"

#include <gtest/gtest.h>

namespace vantoro::test {

inline Match probe(const SourcePtr& source, std::string_view name = "x.zip")
{
    const auto head = readBlock(*source, 0, 256 << 10).value();
    return kZipFormat.probe({head, source.get(), name});
}

inline Result<ArchivePtr> tryOpen(std::string_view bytes, const OpenContext& context = {})
{
    return kZipFormat.open(memorySource(bytes), context);
}

inline ArchivePtr open(std::string_view bytes, const OpenContext& context = {})
{
    EXPECT_NE(probe(memorySource(bytes)), Match::No);
    auto archive = tryOpen(bytes, context);
    EXPECT_TRUE(archive) << archive.error().what;
    return std::move(archive).value();
}

inline ErrorCode outcomeOf(const Item& item) { return item.outcome ? ErrorCode::Internal : item.outcome.error().code; }

}
