<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
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
        <source>an unknown error occurred</source>
        <translation>发生未知错误</translation>
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
</context>
<context>
    <name>vantoro::KXTaskListsView</name>
    <message>
        <source>Extractions</source>
        <translation>解压任务</translation>
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
    <name>vantoro::SpinningIndicator</name>
    <message>
        <source>Busy</source>
        <translation>忙碌</translation>
    </message>
</context>
<context>
    <name>vantoro::StartWindow</name>
    <message>
        <source>Vantoro</source>
        <translation>Vantoro</translation>
    </message>
    <message>
        <source>Drop archives here to extract them</source>
        <translation>将要解压的压缩文件拖到此处</translation>
    </message>
    <message>
        <source>or choose them from your folders</source>
        <translation>或从文件夹中选择</translation>
    </message>
    <message>
        <source>Select Archives…</source>
        <translation>选择压缩文件…</translation>
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
