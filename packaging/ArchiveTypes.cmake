# The file types that belong to Vantoro, by their names in the shared MIME database (and old names that some systems
# still use). Documents that happen to be archives (pdf, docx, swf) are left out: nobody wants an archiver as their
# viewer. Game images and source files that share an extension with an archive are left out, too.
set(VANTORO_MIME_TYPES
    application/zip
    application/x-zip
    application/x-zip-compressed
    application/vnd.rar
    application/x-rar
    application/x-rar-compressed
    application/x-7z-compressed
    application/x-lha
    application/x-lzh-compressed
    application/x-stuffit
    application/x-sit
    application/x-stuffitx
    application/mac-binhex40
    application/x-macbinary
    application/mac-compactpro
    application/x-packit
    application/x-diskdoubler
    application/gzip
    application/x-gzip
    application/x-compressed-tar
    application/x-bzip
    application/x-bzip2
    application/x-bzip-compressed-tar
    application/x-bzip2-compressed-tar
    application/x-xz
    application/x-xz-compressed-tar
    application/x-lzma
    application/x-lzma-compressed-tar
    application/zstd
    application/x-zstd-compressed-tar
    application/x-lz4
    application/x-lz4-compressed-tar
    application/x-lzip
    application/x-lzip-compressed-tar
    application/x-lzop
    application/x-tzo
    application/x-tar
    application/x-pax
    application/x-compress
    application/x-tarz
    application/x-java-archive
    application/java-archive
    application/x-cd-image
    application/x-iso9660-image
    application/x-discjuggler-cd-image
    application/x-nrg
    application/x-mdf
    application/x-xar
    application/x-ace
    application/x-arj
    application/x-alz
    application/x-arc
    application/x-spark
    application/x-zoo
    application/x-ha
    application/x-lbr
    application/x-pma
    application/x-cpio
    application/x-cpio-compressed
    application/x-pak
    application/x-nscripter-archive
    application/vnd.ms-cab-compressed
    application/x-rpm
    application/x-source-rpm
    application/vnd.debian.binary-package
    application/x-deb
    application/x-debian-package
    application/x-archive
    application/x-msi
    application/vnd.android.package-archive
    application/vnd.comicbook+zip
    application/x-cbz
    application/vnd.comicbook-rar
    application/x-cbr
    application/x-amiga-disk-format
    application/x-adz
    application/x-dms
    application/x-lzx
    application/x-amiga-packed-disk
    application/x-powerpacker
    application/warc)

# Offered in file managers' menus, where nothing is opened by accident.
set(VANTORO_MENU_TYPES
    ${VANTORO_MIME_TYPES}
    application/x-ms-dos-executable
    application/vnd.microsoft.portable-executable
    application/vnd.openxmlformats-officedocument.wordprocessingml.document
    application/vnd.adobe.flash.movie
    application/x-nintendo-ds-rom)

# The picture that the desktop shows for a type, for icon themes that have none of their own.
set(VANTORO_TYPE_ICONS
    "application-zip zip"
    "application-vnd.rar rar"
    "application-x-7z-compressed 7z"
    "application-x-tar tar"
    "application-x-compressed-tar tar"
    "application-x-xz-compressed-tar tar"
    "application-x-zstd-compressed-tar tar"
    "application-gzip gz"
    "application-x-bzip bz"
    "application-x-bzip2 bz2"
    "application-x-bzip-compressed-tar tbz"
    "application-x-bzip2-compressed-tar tbz"
    "application-x-xz xz"
    "application-x-lzma lzma"
    "application-x-lzma-compressed-tar lzma"
    "application-x-xar xar"
    "application-x-java-archive jar"
    "application-vnd.android.package-archive apk"
    "application-vnd.comicbook+zip cbz"
    "application-x-macbinary bin"
    "application-x-compress z"
    "application-x-tarz z"
    "application-x-lha generic"
    "application-x-stuffit generic"
    "application-x-stuffitx generic"
    "application-mac-binhex40 generic"
    "application-mac-compactpro generic"
    "application-x-packit generic"
    "application-x-diskdoubler generic"
    "application-x-ace generic"
    "application-x-arj generic"
    "application-x-alz generic"
    "application-x-arc generic"
    "application-x-spark generic"
    "application-x-zoo generic"
    "application-x-ha generic"
    "application-x-lbr generic"
    "application-x-pma generic"
    "application-x-cpio generic"
    "application-x-nscripter-archive generic"
    "application-x-dms generic"
    "application-x-adz generic"
    "application-x-lzx generic"
    "application-x-amiga-packed-disk generic"
    "application-x-powerpacker generic"
    "application-warc generic"
    "application-x-pax generic")
