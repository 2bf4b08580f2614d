#pragma once

#include <QString>

namespace vantoro {

/// The user's settings. Each setter is on disk when it returns; any thread may call.
class KXPrefsDefault {
public:
    /// Null when the user has not chosen one yet.
    static QString lastDestination();
    static void setLastDestination(const QString& path);
    static bool isOperation();
    static void setIsOperation(bool);
    /// True: the single-page main window; false: the window with two pages.
    static bool changeViewMode();
    static void setChangeViewMode(bool);
    /// Archives opened from outside are shown, not extracted (with the two-page window only).
    static bool listArchive();
    static void setListArchive(bool);
    /// 1 an enclosing folder unless there is a single item, 2 always, 3 never; others as 1.
    static qint64 creatFolder();
    static void setCreateFolder(qint64);
    /// 2: the created folder takes the archive's date.
    static qint64 modifiedDate();
    static void setModifiedDate(qint64);
    static bool changeDate();
    static void setChangeDate(bool);
    static bool extractToCurrent();
    static void setExtractToCurrent(bool);
    static bool removeArchive();
    static void setRemoveArchive(bool);
    static bool openFolder();
    static void setOpenFolder(bool);
    /// Percent of confidence from which a detected encoding is used without asking.
    static qint64 autoThreshold();
    static void setAutoThreshold(qint64);
    static qint64 extractToFolder();
    static void setExtractToFolder(qint64);
    /// Encoding number for names in archives; 0 detects.
    static qint64 fileEncode();
    static void setFileEncode(qint64);
    /// Null before the first launch.
    static QString desktop();
    static void setDesktop(const QString& path);

    /// The user's Desktop folder as the platform knows it.
    static QString desktopDirectory();
};

}
