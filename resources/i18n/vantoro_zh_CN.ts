<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>AppCommands</name>
    <message>
        <source>&amp;Open Archive…</source>
        <translation>打开压缩文件(&amp;O)…</translation>
    </message>
    <message>
        <source>&amp;New Archive…</source>
        <translation>新建压缩文件(&amp;N)…</translation>
    </message>
    <message>
        <source>&amp;Extract…</source>
        <translation>解压(&amp;E)…</translation>
    </message>
    <message>
        <source>Extract to the &amp;Desktop…</source>
        <translation>解压到桌面(&amp;D)…</translation>
    </message>
    <message>
        <source>Extract &amp;Beside the Archives…</source>
        <translation>解压到压缩文件所在位置(&amp;B)…</translation>
    </message>
    <message>
        <source>&amp;Look Inside Before Extracting</source>
        <translation>解压前先查看内容(&amp;L)</translation>
    </message>
    <message>
        <source>Window with Side &amp;Panel</source>
        <translation>带侧边栏的窗口(&amp;P)</translation>
    </message>
    <message>
        <source>Show &amp;Main Window</source>
        <translation>显示主窗口(&amp;M)</translation>
    </message>
    <message>
        <source>&amp;Settings</source>
        <translation>设置(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;How to Use</source>
        <translation>使用方法(&amp;H)</translation>
    </message>
    <message>
        <source>&amp;Keyboard Shortcuts</source>
        <translation>键盘快捷键(&amp;K)</translation>
    </message>
    <message>
        <source>Get S&amp;upport</source>
        <translation>获取支持(&amp;U)</translation>
    </message>
    <message>
        <source>Home Pa&amp;ge</source>
        <translation>主页(&amp;G)</translation>
    </message>
    <message>
        <source>&amp;About Vantoro</source>
        <translation>关于 Vantoro(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Close Window</source>
        <translation>关闭窗口(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>退出(&amp;Q)</translation>
    </message>
</context>
<context>
    <name>AppSandboxFileAccess</name>
    <message>
        <source>Allow Access</source>
        <translation>允许访问</translation>
    </message>
    <message>
        <source>%1 needs to access this path to continue. Click Allow to continue.</source>
        <translation>%1 需要访问此位置才能继续。请点击“允许”。</translation>
    </message>
    <message>
        <source>Allow</source>
        <translation>允许</translation>
    </message>
</context>
<context>
    <name>ArchiveTexts</name>
    <message>
        <source>encrypted, names too</source>
        <translation>已加密（含文件名）</translation>
    </message>
    <message>
        <source>encrypted</source>
        <translation>已加密</translation>
    </message>
    <message numerus="yes">
        <source>%Ln entries</source>
        <translation>
            <numerusform>%Ln 个项目</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln files</source>
        <translation>
            <numerusform>%Ln 个文件</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln folders</source>
        <translation>
            <numerusform>%Ln 个文件夹</numerusform>
        </translation>
    </message>
    <message>
        <source>%1, %2 packed</source>
        <translation>%1，压缩后 %2</translation>
    </message>
    <message>
        <source>names in %1</source>
        <translation>文件名编码：%1</translation>
    </message>
    <message numerus="yes">
        <source>%Ln volumes</source>
        <translation>
            <numerusform>%Ln 个分卷</numerusform>
        </translation>
    </message>
    <message>
        <source>damaged: %1</source>
        <translation>已损坏：%1</translation>
    </message>
</context>
<context>
    <name>Charset</name>
    <message>
        <source>Unicode (UTF-8)</source>
        <translation>Unicode（UTF-8）</translation>
    </message>
    <message>
        <source>Western (ISO Latin 1)</source>
        <translation>西欧（ISO Latin 1）</translation>
    </message>
    <message>
        <source>Western (Windows 1252)</source>
        <translation>西欧（Windows 1252）</translation>
    </message>
    <message>
        <source>Western (DOS 437)</source>
        <translation>西欧（DOS 437）</translation>
    </message>
    <message>
        <source>Western (DOS 850)</source>
        <translation>西欧（DOS 850）</translation>
    </message>
    <message>
        <source>Western (Mac OS Roman)</source>
        <translation>西欧（Mac OS Roman）</translation>
    </message>
    <message>
        <source>Western (ISO Latin 9)</source>
        <translation>西欧（ISO Latin 9）</translation>
    </message>
    <message>
        <source>Japanese (Shift JIS)</source>
        <translation>日文（Shift JIS）</translation>
    </message>
    <message>
        <source>Japanese (EUC)</source>
        <translation>日文（EUC）</translation>
    </message>
    <message>
        <source>Japanese (ISO 2022-JP)</source>
        <translation>日文（ISO 2022-JP）</translation>
    </message>
    <message>
        <source>Chinese, simplified (GBK)</source>
        <translation>简体中文（GBK）</translation>
    </message>
    <message>
        <source>Chinese, simplified (GB 18030)</source>
        <translation>简体中文（GB 18030）</translation>
    </message>
    <message>
        <source>Chinese, traditional (Big 5)</source>
        <translation>繁体中文（Big 5）</translation>
    </message>
    <message>
        <source>Korean (EUC, Windows 949)</source>
        <translation>韩文（EUC, Windows 949）</translation>
    </message>
    <message>
        <source>Cyrillic (Windows 1251)</source>
        <translation>西里尔文（Windows 1251）</translation>
    </message>
    <message>
        <source>Cyrillic (DOS 866)</source>
        <translation>西里尔文（DOS 866）</translation>
    </message>
    <message>
        <source>Cyrillic (KOI8-R)</source>
        <translation>西里尔文（KOI8-R）</translation>
    </message>
    <message>
        <source>Cyrillic (KOI8-U)</source>
        <translation>西里尔文（KOI8-U）</translation>
    </message>
    <message>
        <source>Cyrillic (ISO 8859-5)</source>
        <translation>西里尔文（ISO 8859-5）</translation>
    </message>
    <message>
        <source>Cyrillic (Mac OS)</source>
        <translation>西里尔文（Mac OS）</translation>
    </message>
    <message>
        <source>Central European (Windows 1250)</source>
        <translation>中欧（Windows 1250）</translation>
    </message>
    <message>
        <source>Central European (DOS 852)</source>
        <translation>中欧（DOS 852）</translation>
    </message>
    <message>
        <source>Central European (ISO Latin 2)</source>
        <translation>中欧（ISO Latin 2）</translation>
    </message>
    <message>
        <source>Central European (Mac OS)</source>
        <translation>中欧（Mac OS）</translation>
    </message>
    <message>
        <source>Greek (Windows 1253)</source>
        <translation>希腊文（Windows 1253）</translation>
    </message>
    <message>
        <source>Greek (ISO 8859-7)</source>
        <translation>希腊文（ISO 8859-7）</translation>
    </message>
    <message>
        <source>Greek (DOS 737)</source>
        <translation>希腊文（DOS 737）</translation>
    </message>
    <message>
        <source>Turkish (Windows 1254)</source>
        <translation>土耳其文（Windows 1254）</translation>
    </message>
    <message>
        <source>Turkish (ISO Latin 5)</source>
        <translation>土耳其文（ISO Latin 5）</translation>
    </message>
    <message>
        <source>Turkish (DOS 857)</source>
        <translation>土耳其文（DOS 857）</translation>
    </message>
    <message>
        <source>Hebrew (Windows 1255)</source>
        <translation>希伯来文（Windows 1255）</translation>
    </message>
    <message>
        <source>Hebrew (ISO 8859-8)</source>
        <translation>希伯来文（ISO 8859-8）</translation>
    </message>
    <message>
        <source>Hebrew (DOS 862)</source>
        <translation>希伯来文（DOS 862）</translation>
    </message>
    <message>
        <source>Arabic (Windows 1256)</source>
        <translation>阿拉伯文（Windows 1256）</translation>
    </message>
    <message>
        <source>Arabic (ISO 8859-6)</source>
        <translation>阿拉伯文（ISO 8859-6）</translation>
    </message>
    <message>
        <source>Arabic (DOS 864)</source>
        <translation>阿拉伯文（DOS 864）</translation>
    </message>
    <message>
        <source>Baltic (Windows 1257)</source>
        <translation>波罗的海文（Windows 1257）</translation>
    </message>
    <message>
        <source>Baltic (ISO Latin 4)</source>
        <translation>波罗的海文（ISO Latin 4）</translation>
    </message>
    <message>
        <source>Baltic (ISO Latin 7)</source>
        <translation>波罗的海文（ISO Latin 7）</translation>
    </message>
    <message>
        <source>Baltic (DOS 775)</source>
        <translation>波罗的海文（DOS 775）</translation>
    </message>
    <message>
        <source>Vietnamese (Windows 1258)</source>
        <translation>越南文（Windows 1258）</translation>
    </message>
    <message>
        <source>Thai (Windows 874)</source>
        <translation>泰文（Windows 874）</translation>
    </message>
    <message>
        <source>South European (ISO Latin 3)</source>
        <translation>南欧（ISO Latin 3）</translation>
    </message>
    <message>
        <source>Nordic (ISO Latin 6)</source>
        <translation>北欧（ISO Latin 6）</translation>
    </message>
    <message>
        <source>Celtic (ISO Latin 8)</source>
        <translation>凯尔特文（ISO Latin 8）</translation>
    </message>
    <message>
        <source>Nordic (DOS 865)</source>
        <translation>北欧（DOS 865）</translation>
    </message>
    <message>
        <source>Portuguese (DOS 860)</source>
        <translation>葡萄牙文（DOS 860）</translation>
    </message>
    <message>
        <source>Canadian French (DOS 863)</source>
        <translation>加拿大法文（DOS 863）</translation>
    </message>
    <message>
        <source>Icelandic (DOS 861)</source>
        <translation>冰岛文（DOS 861）</translation>
    </message>
</context>
<context>
    <name>CommandLine</name>
    <message>
        <source>there is no option &quot;%1&quot;</source>
        <translation>没有“%1”这个选项</translation>
    </message>
    <message>
        <source>&quot;--extract-to&quot; needs a folder</source>
        <translation>“--extract-to”需要指定文件夹</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a file here</source>
        <translation>“%1”不是本地文件</translation>
    </message>
    <message>
        <source>no archive is given</source>
        <translation>没有指定压缩文件</translation>
    </message>
    <message>
        <source>Usage: vantoro [OPTION] [FILE...]

Opens archives: extracts them, or shows them if the settings say so.
Without an archive the main window is shown.

  --extract-here         extract each archive beside itself
  --extract-to FOLDER    extract into FOLDER
  --extract-to-desktop   extract into the Desktop folder of the settings
  --extract-ask          ask where to extract
  --extract              extract to where the settings say, or ask
  --compress             make an archive of the files
  --dbus-service         wait for calls on the session bus
  -h, --help             show this help
  --version              show the version
  --                     everything after this is a file

Files may be paths or file:// URIs. vantoro-cli works without a display.
</source>
        <translation>用法：vantoro [选项] [文件...]

打开压缩文件：根据设置解压或显示其内容。
不指定压缩文件时显示主窗口。

  --extract-here         解压到各压缩文件所在的文件夹
  --extract-to 文件夹    解压到指定的文件夹
  --extract-to-desktop   解压到设置中的桌面文件夹
  --extract-ask          询问解压位置
  --extract              按设置解压，或询问
  --compress             用这些文件创建压缩文件
  --dbus-service         等待会话总线上的调用
  -h, --help             显示此帮助
  --version              显示版本
  --                     其后全部为文件

文件可以是路径或 file:// URI。vantoro-cli 无需显示环境即可使用。
</translation>
    </message>
</context>
<context>
    <name>EntryPreviewer</name>
    <message>
        <source>Reading “%1”…</source>
        <translation>正在读取“%1”…</translation>
    </message>
</context>
<context>
    <name>ExtractionSummary</name>
    <message>
        <source>&quot;%1&quot; was extracted</source>
        <translation>“%1”已解压</translation>
    </message>
    <message numerus="yes">
        <source>%n archive(s) were extracted</source>
        <translation>
            <numerusform>已解压 %n 个压缩文件</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; could not be extracted</source>
        <translation>无法解压“%1”</translation>
    </message>
    <message>
        <source>%1 of %2 archives could not be extracted</source>
        <translation>%2 个压缩文件中有 %1 个无法解压</translation>
    </message>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>还有 %n 个</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; in %2</source>
        <translation>“%1”，位于 %2</translation>
    </message>
    <message numerus="yes">
        <source>%n entry(s) were damaged or refused</source>
        <translation>
            <numerusform>%n 个项目已损坏或被拒绝</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>FilePreview</name>
    <message numerus="yes">
        <source>%n item(s)</source>
        <translation>
            <numerusform>%n 个项目</numerusform>
        </translation>
    </message>
    <message>
        <source>Cannot be read</source>
        <translation>无法读取</translation>
    </message>
</context>
<context>
    <name>Formats</name>
    <message>
        <source>RPM package</source>
        <translation>RPM 软件包</translation>
    </message>
    <message>
        <source>tar archive</source>
        <translation>tar 归档</translation>
    </message>
    <message>
        <source>RAR archive</source>
        <translation>RAR 压缩文件</translation>
    </message>
    <message>
        <source>ARJ archive</source>
        <translation>ARJ 压缩文件</translation>
    </message>
    <message>
        <source>cpio archive</source>
        <translation>cpio 归档</translation>
    </message>
    <message>
        <source>ISO 9660 disc image</source>
        <translation>ISO 9660 光盘映像</translation>
    </message>
    <message>
        <source>gzip file</source>
        <translation>gzip 文件</translation>
    </message>
    <message>
        <source>bzip2 file</source>
        <translation>bzip2 文件</translation>
    </message>
    <message>
        <source>xz file</source>
        <translation>xz 文件</translation>
    </message>
    <message>
        <source>Zstandard file</source>
        <translation>Zstandard 文件</translation>
    </message>
    <message>
        <source>LZ4 file</source>
        <translation>LZ4 文件</translation>
    </message>
    <message>
        <source>lzip file</source>
        <translation>lzip 文件</translation>
    </message>
    <message>
        <source>lzop file</source>
        <translation>lzop 文件</translation>
    </message>
    <message>
        <source>Unix compress file</source>
        <translation>Unix compress 文件</translation>
    </message>
    <message>
        <source>LZMA file</source>
        <translation>LZMA 文件</translation>
    </message>
    <message>
        <source>zlib stream</source>
        <translation>zlib 数据流</translation>
    </message>
    <message>
        <source>Brotli file</source>
        <translation>Brotli 文件</translation>
    </message>
    <message>
        <source>Zip archive</source>
        <translation>Zip 压缩文件</translation>
    </message>
    <message>
        <source>LHA archive</source>
        <translation>LHA 压缩文件</translation>
    </message>
    <message>
        <source>PMarc archive</source>
        <translation>PMarc 压缩文件</translation>
    </message>
    <message>
        <source>Unix archive or Debian package</source>
        <translation>Unix 归档或 Debian 软件包</translation>
    </message>
    <message>
        <source>xar archive</source>
        <translation>xar 归档</translation>
    </message>
    <message>
        <source>Web archive</source>
        <translation>Web 归档</translation>
    </message>
    <message>
        <source>NSIS installer</source>
        <translation>NSIS 安装程序</translation>
    </message>
    <message>
        <source>7z archive</source>
        <translation>7z 压缩文件</translation>
    </message>
    <message>
        <source>Cabinet</source>
        <translation>Cabinet 压缩文件</translation>
    </message>
    <message>
        <source>Windows installer package</source>
        <translation>Windows 安装包</translation>
    </message>
    <message>
        <source>Compound file</source>
        <translation>复合文件</translation>
    </message>
    <message>
        <source>Compiled help</source>
        <translation>已编译的帮助文件</translation>
    </message>
    <message>
        <source>Compiled help 2</source>
        <translation>已编译的帮助文件 2</translation>
    </message>
    <message>
        <source>Windows image</source>
        <translation>Windows 映像</translation>
    </message>
    <message>
        <source>UDF disc image</source>
        <translation>UDF 光盘映像</translation>
    </message>
    <message>
        <source>SquashFS image</source>
        <translation>SquashFS 映像</translation>
    </message>
    <message>
        <source>CramFS image</source>
        <translation>CramFS 映像</translation>
    </message>
    <message>
        <source>macOS disk image</source>
        <translation>macOS 磁盘映像</translation>
    </message>
    <message>
        <source>Virtual disk</source>
        <translation>虚拟磁盘</translation>
    </message>
    <message>
        <source>NTFS image</source>
        <translation>NTFS 映像</translation>
    </message>
    <message>
        <source>APFS image</source>
        <translation>APFS 映像</translation>
    </message>
    <message>
        <source>HFS+ image</source>
        <translation>HFS+ 映像</translation>
    </message>
    <message>
        <source>FAT image</source>
        <translation>FAT 映像</translation>
    </message>
    <message>
        <source>ext file system image</source>
        <translation>ext 文件系统映像</translation>
    </message>
    <message>
        <source>Disk image</source>
        <translation>磁盘映像</translation>
    </message>
</context>
<context>
    <name>InformationWindow</name>
    <message>
        <source>Windows and the desktop</source>
        <translation>窗口与桌面</translation>
    </message>
    <message>
        <source>Reads many formats, writes 7z</source>
        <translation>读取多种格式，写入 7z</translation>
    </message>
    <message>
        <source>Reads and writes further formats</source>
        <translation>读写其他格式</translation>
    </message>
    <message>
        <source>LHA methods</source>
        <translation>LHA 压缩方法</translation>
    </message>
    <message>
        <source>Deflate, whole blocks</source>
        <translation>Deflate（整块）</translation>
    </message>
    <message>
        <source>Deflate, streams</source>
        <translation>Deflate（流）</translation>
    </message>
    <message>
        <source>Deflate, writing</source>
        <translation>Deflate（写入）</translation>
    </message>
    <message>
        <source>xz and lzma</source>
        <translation>xz 和 lzma</translation>
    </message>
    <message>
        <source>zst</source>
        <translation>zst</translation>
    </message>
    <message>
        <source>lz4</source>
        <translation>lz4</translation>
    </message>
    <message>
        <source>br</source>
        <translation>br</translation>
    </message>
    <message>
        <source>Wave files within zip</source>
        <translation>zip 中的 WAV 文件</translation>
    </message>
    <message>
        <source>Ciphers and checksums</source>
        <translation>加密与校验和</translation>
    </message>
    <message>
        <source>Text encodings</source>
        <translation>文本编码</translation>
    </message>
    <message>
        <source>Finding an encoding out</source>
        <translation>编码检测</translation>
    </message>
    <message>
        <source>Confines the decoders</source>
        <translation>隔离解码程序</translation>
    </message>
    <message>
        <source>Strength of passwords</source>
        <translation>密码强度</translation>
    </message>
</context>
<context>
    <name>KXUnarchiveWrapper</name>
    <message>
        <source>“%1” is too large to be shown: it has %2, and at most %3 are read for a preview.</source>
        <translation>“%1”太大，无法显示：大小为 %2，而预览最多读取 %3。</translation>
    </message>
    <message>
        <source>more than that</source>
        <translation>超过此值</translation>
    </message>
    <message>
        <source>“%1” is encrypted, and the password does not fit.</source>
        <translation>“%1”已加密，且密码不正确。</translation>
    </message>
    <message>
        <source>“%1” cannot be read: %2.</source>
        <translation>无法读取“%1”：%2。</translation>
    </message>
</context>
<context>
    <name>MainPages</name>
    <message>
        <source>Compress</source>
        <translation>压缩</translation>
    </message>
    <message>
        <source>Extract</source>
        <translation>解压</translation>
    </message>
</context>
<context>
    <name>PackKinds</name>
    <message>
        <source>Zip archive</source>
        <translation>Zip 压缩文件</translation>
    </message>
    <message>
        <source>7-Zip archive</source>
        <translation>7-Zip 压缩文件</translation>
    </message>
    <message>
        <source>Gzip-compressed tar</source>
        <translation>Gzip 压缩的 tar</translation>
    </message>
    <message>
        <source>XZ-compressed tar</source>
        <translation>XZ 压缩的 tar</translation>
    </message>
    <message>
        <source>Zstandard-compressed tar</source>
        <translation>Zstandard 压缩的 tar</translation>
    </message>
    <message>
        <source>Bzip2-compressed tar</source>
        <translation>Bzip2 压缩的 tar</translation>
    </message>
    <message>
        <source>Tar archive</source>
        <translation>Tar 归档</translation>
    </message>
    <message>
        <source>LZ4-compressed tar</source>
        <translation>LZ4 压缩的 tar</translation>
    </message>
    <message>
        <source>Cpio archive</source>
        <translation>Cpio 归档</translation>
    </message>
    <message>
        <source>CD image (ISO 9660)</source>
        <translation>光盘映像 (ISO 9660)</translation>
    </message>
    <message>
        <source>Xar archive</source>
        <translation>Xar 归档</translation>
    </message>
    <message>
        <source>Ar archive</source>
        <translation>Ar 归档</translation>
    </message>
    <message>
        <source>Java archive</source>
        <translation>Java 归档</translation>
    </message>
    <message>
        <source>Comic book archive</source>
        <translation>漫画压缩文件</translation>
    </message>
    <message>
        <source>Gzip-compressed file</source>
        <translation>Gzip 压缩的文件</translation>
    </message>
    <message>
        <source>XZ-compressed file</source>
        <translation>XZ 压缩的文件</translation>
    </message>
    <message>
        <source>Zstandard-compressed file</source>
        <translation>Zstandard 压缩的文件</translation>
    </message>
    <message>
        <source>Bzip2-compressed file</source>
        <translation>Bzip2 压缩的文件</translation>
    </message>
    <message>
        <source>LZ4-compressed file</source>
        <translation>LZ4 压缩的文件</translation>
    </message>
</context>
<context>
    <name>PasswordGate</name>
    <message>
        <source>Checking the password…</source>
        <translation>正在验证密码…</translation>
    </message>
</context>
<context>
    <name>PasswordStrength</name>
    <message>
        <source>Weak</source>
        <translation>弱</translation>
    </message>
    <message>
        <source>Fair</source>
        <translation>一般</translation>
    </message>
    <message>
        <source>Good</source>
        <translation>良好</translation>
    </message>
    <message>
        <source>Strong</source>
        <translation>强</translation>
    </message>
</context>
<context>
    <name>PreviewContent</name>
    <message>
        <source>This picture cannot be shown: it is damaged, or too large to decode.</source>
        <translation>无法显示此图片：它已损坏或尺寸过大。</translation>
    </message>
    <message>
        <source>%1 × %2 pixels</source>
        <translation>%1 × %2 像素</translation>
    </message>
    <message>
        <source>The beginning of %1</source>
        <translation>%1 的开头部分</translation>
    </message>
    <message>
        <source>This file is empty.</source>
        <translation>此文件为空。</translation>
    </message>
    <message>
        <source>There is no preview for this kind of file.</source>
        <translation>此类文件没有预览。</translation>
    </message>
</context>
<context>
    <name>ProgressPanel</name>
    <message>
        <source>%1 of %2</source>
        <translation>%1/%2</translation>
    </message>
    <message>
        <source>%1 of %2 files</source>
        <translation>%1/%2 个文件</translation>
    </message>
    <message>
        <source>A few seconds left</source>
        <translation>还剩几秒</translation>
    </message>
    <message numerus="yes">
        <source>About %n seconds left</source>
        <translation>
            <numerusform>大约还剩 %n 秒</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>About %n minute(s) left</source>
        <translation>
            <numerusform>大约还剩 %n 分钟</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>About %n hour(s) left</source>
        <translation>
            <numerusform>大约还剩 %n 小时</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>QFileDialog</name>
    <message>
        <source>Allowed files (%1)</source>
        <translation>允许的文件 (%1)</translation>
    </message>
</context>
<context>
    <name>XADException</name>
    <message>
        <source>an internal error occurred</source>
        <translation>发生内部错误</translation>
    </message>
    <message>
        <source>stopped by the user</source>
        <translation>已被用户停止</translation>
    </message>
    <message>
        <source>reading the archive failed</source>
        <translation>读取压缩文件失败</translation>
    </message>
    <message>
        <source>this is not an archive of a known format</source>
        <translation>这不是已知格式的压缩文件</translation>
    </message>
    <message>
        <source>the archive ends too early</source>
        <translation>压缩文件不完整，提前结束</translation>
    </message>
    <message>
        <source>the archive is damaged</source>
        <translation>压缩文件已损坏</translation>
    </message>
    <message>
        <source>the data are damaged (wrong checksum)</source>
        <translation>数据已损坏（校验和错误）</translation>
    </message>
    <message>
        <source>the data are damaged (wrong size)</source>
        <translation>数据已损坏（大小错误）</translation>
    </message>
    <message>
        <source>the compression method is not supported</source>
        <translation>不支持此压缩方法</translation>
    </message>
    <message>
        <source>the kind of encryption is not supported</source>
        <translation>不支持此加密方式</translation>
    </message>
    <message>
        <source>the archive uses a feature that is not supported</source>
        <translation>压缩文件使用了不支持的功能</translation>
    </message>
    <message>
        <source>a password is needed</source>
        <translation>需要密码</translation>
    </message>
    <message>
        <source>the password is wrong, or the data are damaged</source>
        <translation>密码错误，或数据已损坏</translation>
    </message>
    <message>
        <source>a part of the archive is missing</source>
        <translation>缺少压缩文件的某个分卷</translation>
    </message>
    <message>
        <source>the archive asks for more than is allowed</source>
        <translation>压缩文件要求的资源超出限制</translation>
    </message>
    <message>
        <source>there is not enough memory</source>
        <translation>内存不足</translation>
    </message>
    <message>
        <source>the reader for this format stopped unexpectedly</source>
        <translation>此格式的读取程序意外停止</translation>
    </message>
    <message>
        <source>the reader for this format does not get on</source>
        <translation>此格式的读取程序没有进展</translation>
    </message>
    <message>
        <source>entries of the archive overlap, as in a forged archive</source>
        <translation>压缩文件的项目互相重叠，可能是伪造的</translation>
    </message>
    <message>
        <source>the name is not safe</source>
        <translation>名称不安全</translation>
    </message>
    <message>
        <source>the link leads out of the destination folder</source>
        <translation>链接指向目标文件夹之外</translation>
    </message>
    <message>
        <source>devices, pipes and sockets are not created</source>
        <translation>不会创建设备、管道和套接字</translation>
    </message>
    <message>
        <source>the entry was refused</source>
        <translation>项目被拒绝</translation>
    </message>
    <message>
        <source>the name is already taken</source>
        <translation>该名称已被占用</translation>
    </message>
    <message>
        <source>the disk is full</source>
        <translation>磁盘已满</translation>
    </message>
    <message>
        <source>writing failed</source>
        <translation>写入失败</translation>
    </message>
    <message>
        <source>the destination folder cannot be written to</source>
        <translation>无法写入目标文件夹</translation>
    </message>
    <message>
        <source>the destination folder has vanished</source>
        <translation>目标文件夹已不存在</translation>
    </message>
    <message>
        <source>the archive would grow out of proportion</source>
        <translation>压缩文件解压后会异常庞大</translation>
    </message>
    <message>
        <source>the encoding of the file names is not known</source>
        <translation>文件名的编码未知</translation>
    </message>
    <message>
        <source>the file cannot be read</source>
        <translation>无法读取文件</translation>
    </message>
    <message>
        <source>archives of this kind cannot be created</source>
        <translation>无法创建这种类型的压缩文件</translation>
    </message>
    <message>
        <source>something unknown follows the end of the compressed data</source>
        <translation>压缩数据末尾之后有未知内容</translation>
    </message>
    <message>
        <source>the program was updated while it runs; please start it again</source>
        <translation>程序在运行时被更新，请重新启动</translation>
    </message>
    <message>
        <source>an unknown error occurred</source>
        <translation>发生未知错误</translation>
    </message>
</context>
<context>
    <name>vantoro::AppCommands</name>
    <message>
        <source>Extract page</source>
        <translation>解压页面</translation>
    </message>
    <message>
        <source>Compress page</source>
        <translation>压缩页面</translation>
    </message>
    <message>
        <source>Next page</source>
        <translation>下一页</translation>
    </message>
    <message>
        <source>Preview the chosen entry</source>
        <translation>预览所选项目</translation>
    </message>
    <message>
        <source>Filter entries</source>
        <translation>筛选项目</translation>
    </message>
    <message>
        <source>Choose everything</source>
        <translation>全选</translation>
    </message>
    <message>
        <source>Open or close a folder of the archive</source>
        <translation>展开或折叠压缩文件中的文件夹</translation>
    </message>
    <message>
        <source>Stop what runs, close a question or a preview</source>
        <translation>停止当前操作，关闭询问或预览</translation>
    </message>
</context>
<context>
    <name>vantoro::AppDelegate</name>
    <message>
        <source>Select archives to extract</source>
        <translation>选择要解压的压缩文件</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>选择</translation>
    </message>
    <message>
        <source>Please select the extracted destination</source>
        <translation>请选择解压位置</translation>
    </message>
    <message>
        <source>Extract</source>
        <translation>解压</translation>
    </message>
</context>
<context>
    <name>vantoro::ArchiveTreeModel</name>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>大小</translation>
    </message>
    <message>
        <source>Modified</source>
        <translation>修改时间</translation>
    </message>
</context>
<context>
    <name>vantoro::ChosenExtraction</name>
    <message>
        <source>Please select the destination</source>
        <translation>请选择目标位置</translation>
    </message>
    <message>
        <source>Extract</source>
        <translation>解压</translation>
    </message>
    <message>
        <source>Extracting…</source>
        <translation>正在解压…</translation>
    </message>
</context>
<context>
    <name>vantoro::CompressWindow</name>
    <message>
        <source>Start</source>
        <translation>开始</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Compression Options</source>
        <translation>压缩选项</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>格式</translation>
    </message>
    <message>
        <source>None</source>
        <translation>无</translation>
    </message>
    <message>
        <source>Type it once more</source>
        <translation>再次输入</translation>
    </message>
    <message>
        <source>Repeat the password</source>
        <translation>重复密码</translation>
    </message>
    <message>
        <source>Format:</source>
        <translation>格式：</translation>
    </message>
    <message>
        <source>Password:</source>
        <translation>密码：</translation>
    </message>
    <message>
        <source>Repeat:</source>
        <translation>重复：</translation>
    </message>
    <message>
        <source>The two passwords differ.</source>
        <translation>两次输入的密码不一致。</translation>
    </message>
</context>
<context>
    <name>vantoro::ContentsPresenter</name>
    <message>
        <source>Opening “%1”…</source>
        <translation>正在打开“%1”…</translation>
    </message>
    <message numerus="yes">
        <source>%Ln entries extracted</source>
        <translation>
            <numerusform>已解压 %Ln 个项目</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1, and %Ln more failed</source>
        <translation>
            <numerusform>%1，另有 %Ln 个失败</numerusform>
        </translation>
    </message>
    <message>
        <source>The list is incomplete: %1</source>
        <translation>列表不完整：%1</translation>
    </message>
</context>
<context>
    <name>vantoro::EncodingPanel</name>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>继续</translation>
    </message>
    <message>
        <source>The file names in &quot;%1&quot; do not say how they are written. Choose the encoding in which this name reads right:</source>
        <translation>“%1”中的文件名没有注明编码。请选择能让此名称正确显示的编码：</translation>
    </message>
    <message>
        <source>This name would read: %1</source>
        <translation>此名称将显示为：%1</translation>
    </message>
</context>
<context>
    <name>vantoro::ExtractionReporter</name>
    <message>
        <source>Show in Folder</source>
        <translation>在文件夹中显示</translation>
    </message>
    <message>
        <source>Show Report</source>
        <translation>显示报告</translation>
    </message>
</context>
<context>
    <name>vantoro::HDAlert</name>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
</context>
<context>
    <name>vantoro::HowToUseWindow</name>
    <message>
        <source>How to Use</source>
        <translation>使用方法</translation>
    </message>
    <message>
        <source>Extract</source>
        <translation>解压</translation>
    </message>
    <message>
        <source>Drop archives on the window, or open them in the file manager. They come out one after another; whatever must be asked is asked in the archive&apos;s own row.</source>
        <translation>将压缩文件拖到窗口中，或在文件管理器中打开。它们会依次解压；需要询问时，问题显示在该压缩文件所在的行内。</translation>
    </message>
    <message>
        <source>Look inside</source>
        <translation>查看内容</translation>
    </message>
    <message>
        <source>With &quot;Look inside before extracting&quot; in the settings, an opened archive shows what it holds. Press Space to preview an entry, and extract all of it or only what you choose.</source>
        <translation>在设置中启用“解压前先查看内容”后，打开压缩文件时会显示其内容。按空格键可预览项目，然后解压全部或仅解压所选内容。</translation>
    </message>
    <message>
        <source>Compress</source>
        <translation>压缩</translation>
    </message>
    <message>
        <source>Drop files and folders on the Compress page, choose a kind and, if you like, a password, and say where the archive is to be written.</source>
        <translation>将文件和文件夹拖到压缩页面，选择类型，需要时设置密码，再指定压缩文件的保存位置。</translation>
    </message>
    <message>
        <source>From the file manager</source>
        <translation>从文件管理器</translation>
    </message>
    <message>
        <source>The menu of an archive offers to extract it there, to the Desktop, or to a folder of your choice.</source>
        <translation>在压缩文件的菜单中，可以选择解压到当前位置、桌面或您指定的文件夹。</translation>
    </message>
    <message>
        <source>Always at hand</source>
        <translation>随时可用</translation>
    </message>
    <message>
        <source>Vantoro goes on running when its windows are closed. Its icon in the tray brings them back, and Quit ends it.</source>
        <translation>关闭窗口后 Vantoro 会继续运行。点击托盘图标可重新打开窗口，选择“退出”可结束程序。</translation>
    </message>
</context>
<context>
    <name>vantoro::InformationWindow</name>
    <message>
        <source>About Vantoro</source>
        <translation>关于 Vantoro</translation>
    </message>
    <message>
        <source>&amp;Formats</source>
        <translation>格式(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Libraries</source>
        <translation>库(&amp;L)</translation>
    </message>
    <message>
        <source>Vantoro</source>
        <translation>Vantoro</translation>
    </message>
    <message>
        <source>Version %1, with Qt %2</source>
        <translation>版本 %1，使用 Qt %2</translation>
    </message>
    <message>
        <source>Free software under the GNU General Public License, version 3 or later.</source>
        <translation>自由软件，采用 GNU 通用公共许可证第 3 版或更高版本。</translation>
    </message>
    <message>
        <source>Find a format or an extension</source>
        <translation>查找格式或扩展名</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>格式</translation>
    </message>
    <message>
        <source>Extensions</source>
        <translation>扩展名</translation>
    </message>
    <message>
        <source>Formats that can be read</source>
        <translation>可读取的格式</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>库</translation>
    </message>
    <message>
        <source>Use</source>
        <translation>用途</translation>
    </message>
    <message>
        <source>Licence</source>
        <translation>许可证</translation>
    </message>
    <message>
        <source>Libraries in use</source>
        <translation>使用的库</translation>
    </message>
</context>
<context>
    <name>vantoro::KXArchiveContentsViewController</name>
    <message>
        <source>Extract</source>
        <translation>解压</translation>
    </message>
    <message>
        <source>Please select the archive</source>
        <translation>请选择压缩文件</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>选择</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>预览</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Filter by name</source>
        <translation>按名称筛选</translation>
    </message>
    <message>
        <source>Open…</source>
        <translation>打开…</translation>
    </message>
    <message>
        <source>Choose another archive</source>
        <translation>选择其他压缩文件</translation>
    </message>
    <message>
        <source>Extract what is selected, or everything (Ctrl+E)</source>
        <translation>解压所选项目或全部内容 (Ctrl+E)</translation>
    </message>
    <message>
        <source>Look at the selected file (Space)</source>
        <translation>查看所选文件（空格键）</translation>
    </message>
    <message>
        <source>Close the archive</source>
        <translation>关闭压缩文件</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
    <message>
        <source>Close Folder</source>
        <translation>折叠文件夹</translation>
    </message>
    <message>
        <source>Open Folder</source>
        <translation>展开文件夹</translation>
    </message>
    <message>
        <source>Extract All</source>
        <translation>全部解压</translation>
    </message>
    <message>
        <source>Contents of %1</source>
        <translation>%1 的内容</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>信息</translation>
    </message>
    <message>
        <source>DO NOT support quicklook this archive, please close &apos;Preview an archive&apos;s file list without extraction&apos; in Preferences Panel to extract directly</source>
        <translation>无法查看此压缩文件的内容。请在设置中关闭“解压前先查看内容”以直接解压。</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Wrong Password!</source>
        <translation>密码错误！</translation>
    </message>
    <message>
        <source>This archive is empty</source>
        <translation>此压缩文件为空</translation>
    </message>
    <message>
        <source>Extract…</source>
        <translation>解压…</translation>
    </message>
    <message>
        <source>Extract All…</source>
        <translation>全部解压…</translation>
    </message>
    <message>
        <source>Extract to &quot;%1&quot;</source>
        <translation>解压到“%1”</translation>
    </message>
    <message>
        <source>Extract All to &quot;%1&quot;</source>
        <translation>全部解压到“%1”</translation>
    </message>
</context>
<context>
    <name>vantoro::KXArchiveManageController</name>
    <message>
        <source>DO NOT support unarchive this archive due to the format error.</source>
        <translation>由于格式错误，无法解压此压缩文件。</translation>
    </message>
    <message>
        <source>ERROR happened while reading the contents of the file &quot;%1&quot;: %2</source>
        <translation>读取文件“%1”的内容时出错：%2</translation>
    </message>
    <message>
        <source>ERROR happened while extracting the contents of the file &quot;%1&quot;: %2</source>
        <translation>解压文件“%1”的内容时出错：%2</translation>
    </message>
    <message>
        <source>the result could not be moved into the folder &quot;%1&quot;</source>
        <translation>无法将结果移动到文件夹“%1”</translation>
    </message>
    <message>
        <source>The archive could not be moved to the Trash.</source>
        <translation>无法将压缩文件移到回收站。</translation>
    </message>
    <message>
        <source>DO NOT extract the files &quot;%1&quot; from the archive &quot;%2&quot;:
%3</source>
        <translation>无法从压缩文件“%2”中解压文件“%1”：
%3</translation>
    </message>
    <message>
        <source>DO NOT extract the files &quot;%1&quot; from archive &quot;%2&quot;: %3</source>
        <translation>无法从压缩文件“%2”中解压文件“%1”：%3</translation>
    </message>
    <message>
        <source>The archive &quot;%1&quot; of %2 would unpack to %3. Archives that are made to fill a disk look like this.</source>
        <translation>压缩文件“%1”（%2）解压后将达到 %3。专门用来占满磁盘的压缩文件就是这样的。</translation>
    </message>
    <message>
        <source>The contents of the archive &quot;%1&quot; need %2, but only %3 are free in the destination.</source>
        <translation>压缩文件“%1”的内容需要 %2，但目标位置只剩 %3 可用空间。</translation>
    </message>
    <message>
        <source>The archive &quot;%1&quot; of %2 holds %3 entries.</source>
        <translation>压缩文件“%1”（%2）包含 %3 个项目。</translation>
    </message>
    <message>
        <source>The archive &quot;%1&quot; could not be read to its end: %2</source>
        <translation>无法完整读取压缩文件“%1”：%2</translation>
    </message>
</context>
<context>
    <name>vantoro::KXArchiveTaskView</name>
    <message>
        <source>%1 (+%2 more)</source>
        <translation>%1（另有 %2 个）</translation>
    </message>
    <message>
        <source>Preparing to extract &quot;%1&quot;</source>
        <translation>正在准备解压“%1”</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Extract to Desktop</source>
        <translation>解压到桌面</translation>
    </message>
    <message>
        <source>Choose Folder…</source>
        <translation>选择文件夹…</translation>
    </message>
    <message>
        <source>You may not write to the folder &quot;%1&quot;. Where should &quot;%2&quot; be extracted to?</source>
        <translation>您无权写入文件夹“%1”。要将“%2”解压到哪里？</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>继续</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Extracting &quot;%1&quot;</source>
        <translation>正在解压“%1”</translation>
    </message>
</context>
<context>
    <name>vantoro::KXDropArchiveView</name>
    <message>
        <source>Drop an archive here</source>
        <translation>将压缩文件拖到此处</translation>
    </message>
    <message>
        <source>to look inside, preview and extract what you need</source>
        <translation>即可查看内容、预览并解压所需的文件</translation>
    </message>
    <message>
        <source>Choose an Archive…</source>
        <translation>选择压缩文件…</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>信息</translation>
    </message>
    <message>
        <source>ONLY preview one archive at a time</source>
        <translation>一次只能预览一个压缩文件</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
</context>
<context>
    <name>vantoro::KXDropFilesView</name>
    <message>
        <source>Drop files and folders here to compress them</source>
        <translation>将要压缩的文件和文件夹拖到此处</translation>
    </message>
    <message>
        <source>or choose them from your folders</source>
        <translation>或从文件夹中选择</translation>
    </message>
    <message>
        <source>Add Files…</source>
        <translation>添加文件…</translation>
    </message>
</context>
<context>
    <name>vantoro::KXEncodePopButton</name>
    <message>
        <source>Text encoding</source>
        <translation>文本编码</translation>
    </message>
    <message>
        <source>AUTO Dectect</source>
        <translation>自动检测</translation>
    </message>
    <message>
        <source>Default encoding</source>
        <translation>默认编码</translation>
    </message>
</context>
<context>
    <name>vantoro::KXMainWinController</name>
    <message>
        <source>Vantoro</source>
        <translation>Vantoro</translation>
    </message>
    <message>
        <source>&amp;Menu</source>
        <translation>菜单(&amp;M)</translation>
    </message>
    <message>
        <source>How to use</source>
        <translation>使用方法</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
</context>
<context>
    <name>vantoro::KXPackViewController</name>
    <message>
        <source>Compress</source>
        <translation>压缩</translation>
    </message>
    <message>
        <source>Please select the files</source>
        <translation>请选择文件</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>选择</translation>
    </message>
    <message numerus="yes">
        <source>%n item(s)</source>
        <translation>
            <numerusform>%n 个项目</numerusform>
        </translation>
    </message>
    <message>
        <source>Please select the destination</source>
        <translation>请选择目标位置</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>信息</translation>
    </message>
    <message>
        <source>Please drag files and folers here!</source>
        <translation>请将文件和文件夹拖到这里！</translation>
    </message>
    <message>
        <source>Compressing…</source>
        <translation>正在压缩…</translation>
    </message>
    <message>
        <source>Add…</source>
        <translation>添加…</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>清空</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>格式</translation>
    </message>
    <message>
        <source>Options…</source>
        <translation>选项…</translation>
    </message>
    <message>
        <source>&amp;Format</source>
        <translation>格式(&amp;F)</translation>
    </message>
    <message>
        <source>None</source>
        <translation>无</translation>
    </message>
    <message>
        <source>&amp;Password</source>
        <translation>密码(&amp;P)</translation>
    </message>
</context>
<context>
    <name>vantoro::KXTableCellView</name>
    <message>
        <source>Preview</source>
        <translation>预览</translation>
    </message>
    <message>
        <source>Remove from the list</source>
        <translation>从列表中移除</translation>
    </message>
    <message>
        <source>Preview %1</source>
        <translation>预览 %1</translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation>移除 %1</translation>
    </message>
</context>
<context>
    <name>vantoro::KXTaskListsView</name>
    <message>
        <source>Extractions</source>
        <translation>解压任务</translation>
    </message>
</context>
<context>
    <name>vantoro::MainWindows</name>
    <message>
        <source>Stop compressing and quit?</source>
        <translation>要停止压缩并退出吗？</translation>
    </message>
    <message>
        <source>An archive is being written. It will not be kept.</source>
        <translation>正在写入压缩文件，它将不会被保留。</translation>
    </message>
    <message>
        <source>Stop extracting and quit?</source>
        <translation>要停止解压并退出吗？</translation>
    </message>
    <message>
        <source>An archive is being extracted. What is not finished is removed.</source>
        <translation>正在解压压缩文件，未完成的内容将被删除。</translation>
    </message>
    <message>
        <source>Go On</source>
        <translation>继续</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>退出</translation>
    </message>
</context>
<context>
    <name>vantoro::PackTable</name>
    <message>
        <source>Files to compress</source>
        <translation>要压缩的文件</translation>
    </message>
</context>
<context>
    <name>vantoro::PasswordField</name>
    <message>
        <source>Password</source>
        <translation>密码</translation>
    </message>
    <message>
        <source>Caps Lock is on</source>
        <translation>大写锁定已打开</translation>
    </message>
    <message>
        <source>Hide password</source>
        <translation>隐藏密码</translation>
    </message>
    <message>
        <source>Show password</source>
        <translation>显示密码</translation>
    </message>
</context>
<context>
    <name>vantoro::PasswordPanel</name>
    <message>
        <source>Password &amp;encoding:</source>
        <translation>密码编码(&amp;E)：</translation>
    </message>
    <message>
        <source>Password encoding</source>
        <translation>密码编码</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>继续</translation>
    </message>
    <message>
        <source>Enter a PASSWORD to open the archive &quot;%1&quot;.</source>
        <translation>请输入密码以打开压缩文件“%1”。</translation>
    </message>
    <message>
        <source>That password is not right. Please try again.</source>
        <translation>密码不正确，请重试。</translation>
    </message>
    <message>
        <source>Caps Lock is on.</source>
        <translation>大写锁定已打开。</translation>
    </message>
</context>
<context>
    <name>vantoro::PasswordPrompt</name>
    <message>
        <source>Caps Lock is on</source>
        <translation>大写锁定已打开</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>密码</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>“%1” is encrypted. Which password opens it?</source>
        <translation>“%1”已加密。请输入打开它的密码。</translation>
    </message>
</context>
<context>
    <name>vantoro::PopViewController</name>
    <message>
        <source>Vantoro</source>
        <translation>Vantoro</translation>
    </message>
    <message>
        <source>Extract Archives…</source>
        <translation>解压压缩文件…</translation>
    </message>
    <message>
        <source>Open Main Window</source>
        <translation>打开主窗口</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
    <message>
        <source>How to Use</source>
        <translation>使用方法</translation>
    </message>
    <message>
        <source>Quit Vantoro</source>
        <translation>退出 Vantoro</translation>
    </message>
</context>
<context>
    <name>vantoro::Popover</name>
    <message>
        <source>Vantoro</source>
        <translation>Vantoro</translation>
    </message>
</context>
<context>
    <name>vantoro::PreviewPanel</name>
    <message>
        <source>Open</source>
        <translation>打开</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>预览</translation>
    </message>
    <message>
        <source>Contents</source>
        <translation>内容</translation>
    </message>
    <message>
        <source>Nothing to show</source>
        <translation>没有可显示的内容</translation>
    </message>
</context>
<context>
    <name>vantoro::PreviewWindow</name>
    <message>
        <source>Extract</source>
        <translation>解压</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>预览</translation>
    </message>
    <message>
        <source>Close Preview</source>
        <translation>关闭预览</translation>
    </message>
    <message>
        <source>Extract This File</source>
        <translation>解压此文件</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>图片</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>文本</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>页面</translation>
    </message>
    <message>
        <source>This document is protected by a password of its own.</source>
        <translation>此文档受自身密码保护。</translation>
    </message>
    <message>
        <source>This document is damaged.</source>
        <translation>此文档已损坏。</translation>
    </message>
    <message numerus="yes">
        <source>%Ln pages</source>
        <translation>
            <numerusform>%Ln 页</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>vantoro::ProgressOverlay</name>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Working</source>
        <translation>正在处理</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>进度</translation>
    </message>
    <message>
        <source>Stopping…</source>
        <translation>正在停止…</translation>
    </message>
</context>
<context>
    <name>vantoro::ProgressPanel</name>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>%1 — %2/s</source>
        <translation>%1 — %2/秒</translation>
    </message>
    <message>
        <source>Stopping…</source>
        <translation>正在停止…</translation>
    </message>
</context>
<context>
    <name>vantoro::ReportWindow</name>
    <message>
        <source>Report</source>
        <translation>报告</translation>
    </message>
    <message>
        <source>Files that were refused or damaged</source>
        <translation>被拒绝或已损坏的文件</translation>
    </message>
    <message>
        <source>&amp;Copy Report</source>
        <translation>复制报告(&amp;C)</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
</context>
<context>
    <name>vantoro::SettingsCard</name>
    <message>
        <source>Until Vantoro is started again.</source>
        <translation>在 Vantoro 下次启动前有效。</translation>
    </message>
</context>
<context>
    <name>vantoro::SettingsWindow</name>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
    <message>
        <source>Opening archives</source>
        <translation>打开压缩文件</translation>
    </message>
    <message>
        <source>&amp;Look inside before extracting</source>
        <translation>解压前先查看内容(&amp;L)</translation>
    </message>
    <message>
        <source>An archive that you open is shown first, and extracted when you say so.</source>
        <translation>打开压缩文件时先显示内容，由您决定何时解压。</translation>
    </message>
    <message>
        <source>Main window with a &amp;side panel</source>
        <translation>带侧边栏的主窗口(&amp;S)</translation>
    </message>
    <message>
        <source>One window with the pages listed at its side, instead of the one with tabs. It extracts what you open without showing it first.</source>
        <translation>用侧边栏列出各页面的窗口，代替标签页窗口。打开的压缩文件会直接解压，不先显示内容。</translation>
    </message>
    <message>
        <source>Only where it is needed</source>
        <translation>仅在需要时</translation>
    </message>
    <message>
        <source>Always</source>
        <translation>始终</translation>
    </message>
    <message>
        <source>Never</source>
        <translation>从不</translation>
    </message>
    <message>
        <source>Extracting</source>
        <translation>解压</translation>
    </message>
    <message>
        <source>Make a &amp;folder for what comes out</source>
        <translation>为解压结果创建文件夹(&amp;F)</translation>
    </message>
    <message>
        <source>It is not needed when the archive holds a single item. Never: everything lies loose in the destination.</source>
        <translation>压缩文件只含一个项目时不需要。选择“从不”时，所有内容直接放在目标位置。</translation>
    </message>
    <message>
        <source>&amp;Open what was extracted</source>
        <translation>打开解压的内容(&amp;O)</translation>
    </message>
    <message>
        <source>The folder or file opens when it is ready.</source>
        <translation>完成后自动打开文件夹或文件。</translation>
    </message>
    <message>
        <source>Move the archive to the &amp;Trash</source>
        <translation>将压缩文件移到回收站(&amp;T)</translation>
    </message>
    <message>
        <source>With all its parts, once everything has come out whole.</source>
        <translation>所有内容完整解压后，连同全部分卷一起移动。</translation>
    </message>
    <message>
        <source>Give the new folder the archive&apos;s &amp;date</source>
        <translation>新文件夹使用压缩文件的日期(&amp;D)</translation>
    </message>
    <message>
        <source>Otherwise the folder bears the time of its extraction. Files always keep their own dates.</source>
        <translation>否则文件夹使用解压时的时间。文件始终保留各自的日期。</translation>
    </message>
    <message>
        <source>Ask every time</source>
        <translation>每次询问</translation>
    </message>
    <message>
        <source>Beside the archive</source>
        <translation>压缩文件所在位置</translation>
    </message>
    <message>
        <source>Places</source>
        <translation>位置</translation>
    </message>
    <message>
        <source>&amp;Where archives are extracted to</source>
        <translation>压缩文件的解压位置(&amp;W)</translation>
    </message>
    <message>
        <source>Holds for archives that you open or drop, and for the file manager&apos;s menu.</source>
        <translation>适用于您打开或拖放的压缩文件，以及文件管理器菜单。</translation>
    </message>
    <message>
        <source>&amp;Desktop folder</source>
        <translation>桌面文件夹(&amp;D)</translation>
    </message>
    <message>
        <source>Where &quot;Extract to the Desktop&quot; puts things.</source>
        <translation>“解压到桌面”使用的位置。</translation>
    </message>
    <message>
        <source> %</source>
        <translation>%</translation>
    </message>
    <message>
        <source>File names in old archives</source>
        <translation>旧压缩文件中的文件名</translation>
    </message>
    <message>
        <source>&amp;Encoding of file names</source>
        <translation>文件名编码(&amp;E)</translation>
    </message>
    <message>
        <source>How names are read in archives that do not say it themselves. Without a choice, it is found out.</source>
        <translation>读取未注明编码的压缩文件中的名称时使用。不选择则自动检测。</translation>
    </message>
    <message>
        <source>Ask when &amp;less sure than</source>
        <translation>确信度低于此值时询问(&amp;L)</translation>
    </message>
    <message>
        <source>A guess at the encoding that is surer than this is used without a question.</source>
        <translation>高于此确信度的编码推测将直接使用，不再询问。</translation>
    </message>
    <message>
        <source>Choose the Desktop folder</source>
        <translation>选择桌面文件夹</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>选择</translation>
    </message>
</context>
<context>
    <name>vantoro::ShortcutsWindow</name>
    <message>
        <source>Keyboard Shortcuts</source>
        <translation>键盘快捷键</translation>
    </message>
    <message>
        <source>In every window</source>
        <translation>所有窗口</translation>
    </message>
    <message>
        <source>On the pages</source>
        <translation>各页面</translation>
    </message>
</context>
<context>
    <name>vantoro::SideTable</name>
    <message>
        <source>Pages</source>
        <translation>页面</translation>
    </message>
</context>
<context>
    <name>vantoro::SpinningIndicator</name>
    <message>
        <source>Busy</source>
        <translation>忙碌</translation>
    </message>
</context>
<context>
    <name>vantoro::StatusMenu</name>
    <message>
        <source>Vantoro</source>
        <translation>Vantoro</translation>
    </message>
</context>
<context>
    <name>vantoro::StrengthBar</name>
    <message>
        <source>Password strength</source>
        <translation>密码强度</translation>
    </message>
</context>
<context>
    <name>vantoro::TaskWindow</name>
    <message>
        <source>Extractions</source>
        <translation>解压任务</translation>
    </message>
    <message>
        <source>File &amp;names:</source>
        <translation>文件名(&amp;N)：</translation>
    </message>
    <message>
        <source>Encoding of file names</source>
        <translation>文件名编码</translation>
    </message>
    <message numerus="yes">
        <source>%n archive(s)</source>
        <translation>
            <numerusform>%n 个压缩文件</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>vantoro::TwoPageWindow</name>
    <message>
        <source>Vantoro</source>
        <translation>Vantoro</translation>
    </message>
    <message>
        <source>Menu</source>
        <translation>菜单</translation>
    </message>
</context>
<context>
    <name>vantoro::WaitPanel</name>
    <message>
        <source>Waiting</source>
        <translation>等待中</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Cancel %1</source>
        <translation>取消 %1</translation>
    </message>
</context>
</TS>
