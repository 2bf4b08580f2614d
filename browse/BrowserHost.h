#pragma once

#include <QString>

#include <memory>
#include <vector>

namespace vantoro {

/// What the contents browser needs of the application's controller. Main thread; outlives the page.
class BrowserHost {
public:
    virtual ~BrowserHost() = default;

    /// Extracts the whole archive as a job.
    virtual void unarchiveZip(const QString& path) = 0;
    /// Extracts only the entries with these indices, in a job that reads the list itself when it runs.
    virtual void unarchiveZip(const QString& path, std::shared_ptr<const std::vector<quint64>> numArray) = 0;
    virtual void openPrefsWindow() = 0;
    /// The single-page window's table takes no clicks while it is false.
    virtual void setMainTableViewEnable(bool enable) = 0;
};

}
