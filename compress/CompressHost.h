#pragma once

namespace vantoro {

/// What the compression page needs of the program around it. Main thread. The host outlives the page.
class CompressHost {
public:
    virtual ~CompressHost() = default;
    /// Archives are being written, until compressionEnded(): the program should neither change pages nor quit unasked.
    /// A page that is destroyed meanwhile stops the writing, waits for it, and still calls compressionEnded().
    virtual void compressionBegan() = 0;
    virtual void compressionEnded() = 0;
};

}
