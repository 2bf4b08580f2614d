#pragma once

// libarchive under its own names, loaded when one of them is called: it brings a dozen libraries along, and most
// archives are read and written without it. Within the namespace these names hide the library's.

#include "engine/io/late_library.h"

#include <archive.h>
#include <archive_entry.h>

namespace vantoro {

inline constinit LateLibrary libarchiveLibrary{VANTORO_LIBARCHIVE_SONAME};

// NOLINTBEGIN(bugprone-macro-parentheses): a name that is declared takes none
#define VANTORO_LATE(name)                                                                                             \
    inline constinit const LateFunction<decltype(::name)> name { libarchiveLibrary, #name }
// NOLINTEND(bugprone-macro-parentheses)
VANTORO_LATE(archive_entry_atime);
VANTORO_LATE(archive_entry_atime_is_set);
VANTORO_LATE(archive_entry_atime_nsec);
VANTORO_LATE(archive_entry_birthtime);
VANTORO_LATE(archive_entry_birthtime_is_set);
VANTORO_LATE(archive_entry_birthtime_nsec);
VANTORO_LATE(archive_entry_filetype);
VANTORO_LATE(archive_entry_free);
VANTORO_LATE(archive_entry_gname);
VANTORO_LATE(archive_entry_hardlink);
VANTORO_LATE(archive_entry_is_data_encrypted);
VANTORO_LATE(archive_entry_mode);
VANTORO_LATE(archive_entry_mtime);
VANTORO_LATE(archive_entry_mtime_is_set);
VANTORO_LATE(archive_entry_mtime_nsec);
VANTORO_LATE(archive_entry_new);
VANTORO_LATE(archive_entry_pathname);
VANTORO_LATE(archive_entry_set_gid);
VANTORO_LATE(archive_entry_set_ino64);
VANTORO_LATE(archive_entry_set_mode);
VANTORO_LATE(archive_entry_set_mtime);
VANTORO_LATE(archive_entry_set_nlink);
VANTORO_LATE(archive_entry_set_pathname);
VANTORO_LATE(archive_entry_set_size);
VANTORO_LATE(archive_entry_set_symlink);
VANTORO_LATE(archive_entry_set_uid);
VANTORO_LATE(archive_entry_size);
VANTORO_LATE(archive_entry_size_is_set);
VANTORO_LATE(archive_entry_symlink);
VANTORO_LATE(archive_entry_uname);
VANTORO_LATE(archive_entry_xattr_next);
VANTORO_LATE(archive_entry_xattr_reset);
VANTORO_LATE(archive_errno);
VANTORO_LATE(archive_error_string);
VANTORO_LATE(archive_read_data_block);
VANTORO_LATE(archive_read_free);
VANTORO_LATE(archive_read_header_position);
VANTORO_LATE(archive_read_new);
VANTORO_LATE(archive_read_next_header);
VANTORO_LATE(archive_read_open1);
VANTORO_LATE(archive_read_set_callback_data);
VANTORO_LATE(archive_read_set_read_callback);
VANTORO_LATE(archive_read_set_seek_callback);
VANTORO_LATE(archive_read_set_skip_callback);
VANTORO_LATE(archive_read_support_format_ar);
VANTORO_LATE(archive_read_support_format_warc);
VANTORO_LATE(archive_read_support_format_xar);
VANTORO_LATE(archive_write_add_filter_none);
VANTORO_LATE(archive_write_close);
VANTORO_LATE(archive_write_data);
VANTORO_LATE(archive_write_fail);
VANTORO_LATE(archive_write_finish_entry);
VANTORO_LATE(archive_write_free);
VANTORO_LATE(archive_write_header);
VANTORO_LATE(archive_write_new);
VANTORO_LATE(archive_write_open);
VANTORO_LATE(archive_write_set_bytes_in_last_block);
VANTORO_LATE(archive_write_set_bytes_per_block);
VANTORO_LATE(archive_write_set_format_ar_svr4);
VANTORO_LATE(archive_write_set_format_cpio_newc);
VANTORO_LATE(archive_write_set_format_iso9660);
VANTORO_LATE(archive_write_set_format_pax_restricted);
VANTORO_LATE(archive_write_set_format_xar);
#undef VANTORO_LATE
/// Spelled out: the library's own type has an attribute, which a template does not take.
inline constinit const LateFunction<void(archive*, int, const char*, ...)> archive_set_error{libarchiveLibrary,
                                                                                             "archive_set_error"};

}
