<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja">
<context>
    <name>AppCommands</name>
    <message>
        <source>&amp;Open Archive…</source>
        <translation>アーカイブを開く(&amp;O)…</translation>
    </message>
    <message>
        <source>&amp;New Archive…</source>
        <translation>新規アーカイブ(&amp;N)…</translation>
    </message>
    <message>
        <source>&amp;Extract…</source>
        <translation>展開(&amp;E)…</translation>
    </message>
    <message>
        <source>Extract to the &amp;Desktop…</source>
        <translation>デスクトップに展開(&amp;D)…</translation>
    </message>
    <message>
        <source>Extract &amp;Beside the Archives…</source>
        <translation>アーカイブと同じ場所に展開(&amp;B)…</translation>
    </message>
    <message>
        <source>&amp;Look Inside Before Extracting</source>
        <translation>展開する前に中身を見る(&amp;L)</translation>
    </message>
    <message>
        <source>Window with Side &amp;Panel</source>
        <translation>サイドパネル付きウインドウ(&amp;P)</translation>
    </message>
    <message>
        <source>Show &amp;Main Window</source>
        <translation>メインウインドウを表示(&amp;M)</translation>
    </message>
    <message>
        <source>&amp;Settings</source>
        <translation>設定(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;How to Use</source>
        <translation>使い方(&amp;H)</translation>
    </message>
    <message>
        <source>&amp;Keyboard Shortcuts</source>
        <translation>キーボードショートカット(&amp;K)</translation>
    </message>
    <message>
        <source>Get S&amp;upport</source>
        <translation>サポートを受ける(&amp;U)</translation>
    </message>
    <message>
        <source>Home Pa&amp;ge</source>
        <translation>ウェブサイト(&amp;G)</translation>
    </message>
    <message>
        <source>&amp;About Vantoro</source>
        <translation>Vantoro について(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;Close Window</source>
        <translation>ウインドウを閉じる(&amp;C)</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>終了(&amp;Q)</translation>
    </message>
</context>
<context>
    <name>AppSandboxFileAccess</name>
    <message>
        <source>Allow Access</source>
        <translation>アクセスを許可</translation>
    </message>
    <message>
        <source>%1 needs to access this path to continue. Click Allow to continue.</source>
        <translation>続けるには、%1 がこの場所にアクセスする必要があります。「許可」をクリックしてください。</translation>
    </message>
    <message>
        <source>Allow</source>
        <translation>許可</translation>
    </message>
</context>
<context>
    <name>ArchiveTexts</name>
    <message>
        <source>encrypted, names too</source>
        <translation>暗号化 (名前も)</translation>
    </message>
    <message>
        <source>encrypted</source>
        <translation>暗号化</translation>
    </message>
    <message numerus="yes">
        <source>%Ln entries</source>
        <translation>
            <numerusform>%Ln 項目</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln files</source>
        <translation>
            <numerusform>%Ln ファイル</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln folders</source>
        <translation>
            <numerusform>%Ln フォルダー</numerusform>
        </translation>
    </message>
    <message>
        <source>%1, %2 packed</source>
        <translation>%1、圧縮時 %2</translation>
    </message>
    <message>
        <source>names in %1</source>
        <translation>名前の文字コード: %1</translation>
    </message>
    <message numerus="yes">
        <source>%Ln volumes</source>
        <translation>
            <numerusform>%Ln 分割</numerusform>
        </translation>
    </message>
    <message>
        <source>damaged: %1</source>
        <translation>破損: %1</translation>
    </message>
</context>
<context>
    <name>Charset</name>
    <message>
        <source>Unicode (UTF-8)</source>
        <translation>Unicode (UTF-8)</translation>
    </message>
    <message>
        <source>Western (ISO Latin 1)</source>
        <translation>西ヨーロッパ (ISO Latin 1)</translation>
    </message>
    <message>
        <source>Western (Windows 1252)</source>
        <translation>西ヨーロッパ (Windows 1252)</translation>
    </message>
    <message>
        <source>Western (DOS 437)</source>
        <translation>西ヨーロッパ (DOS 437)</translation>
    </message>
    <message>
        <source>Western (DOS 850)</source>
        <translation>西ヨーロッパ (DOS 850)</translation>
    </message>
    <message>
        <source>Western (Mac OS Roman)</source>
        <translation>西ヨーロッパ (Mac OS Roman)</translation>
    </message>
    <message>
        <source>Western (ISO Latin 9)</source>
        <translation>西ヨーロッパ (ISO Latin 9)</translation>
    </message>
    <message>
        <source>Japanese (Shift JIS)</source>
        <translation>日本語 (Shift JIS)</translation>
    </message>
    <message>
        <source>Japanese (EUC)</source>
        <translation>日本語 (EUC)</translation>
    </message>
    <message>
        <source>Japanese (ISO 2022-JP)</source>
        <translation>日本語 (ISO 2022-JP)</translation>
    </message>
    <message>
        <source>Chinese, simplified (GBK)</source>
        <translation>簡体字中国語 (GBK)</translation>
    </message>
    <message>
        <source>Chinese, simplified (GB 18030)</source>
        <translation>簡体字中国語 (GB 18030)</translation>
    </message>
    <message>
        <source>Chinese, traditional (Big 5)</source>
        <translation>繁体字中国語 (Big 5)</translation>
    </message>
    <message>
        <source>Korean (EUC, Windows 949)</source>
        <translation>韓国語 (EUC, Windows 949)</translation>
    </message>
    <message>
        <source>Cyrillic (Windows 1251)</source>
        <translation>キリル文字 (Windows 1251)</translation>
    </message>
    <message>
        <source>Cyrillic (DOS 866)</source>
        <translation>キリル文字 (DOS 866)</translation>
    </message>
    <message>
        <source>Cyrillic (KOI8-R)</source>
        <translation>キリル文字 (KOI8-R)</translation>
    </message>
    <message>
        <source>Cyrillic (KOI8-U)</source>
        <translation>キリル文字 (KOI8-U)</translation>
    </message>
    <message>
        <source>Cyrillic (ISO 8859-5)</source>
        <translation>キリル文字 (ISO 8859-5)</translation>
    </message>
    <message>
        <source>Cyrillic (Mac OS)</source>
        <translation>キリル文字 (Mac OS)</translation>
    </message>
    <message>
        <source>Central European (Windows 1250)</source>
        <translation>中央ヨーロッパ (Windows 1250)</translation>
    </message>
    <message>
        <source>Central European (DOS 852)</source>
        <translation>中央ヨーロッパ (DOS 852)</translation>
    </message>
    <message>
        <source>Central European (ISO Latin 2)</source>
        <translation>中央ヨーロッパ (ISO Latin 2)</translation>
    </message>
    <message>
        <source>Central European (Mac OS)</source>
        <translation>中央ヨーロッパ (Mac OS)</translation>
    </message>
    <message>
        <source>Greek (Windows 1253)</source>
        <translation>ギリシャ語 (Windows 1253)</translation>
    </message>
    <message>
        <source>Greek (ISO 8859-7)</source>
        <translation>ギリシャ語 (ISO 8859-7)</translation>
    </message>
    <message>
        <source>Greek (DOS 737)</source>
        <translation>ギリシャ語 (DOS 737)</translation>
    </message>
    <message>
        <source>Turkish (Windows 1254)</source>
        <translation>トルコ語 (Windows 1254)</translation>
    </message>
    <message>
        <source>Turkish (ISO Latin 5)</source>
        <translation>トルコ語 (ISO Latin 5)</translation>
    </message>
    <message>
        <source>Turkish (DOS 857)</source>
        <translation>トルコ語 (DOS 857)</translation>
    </message>
    <message>
        <source>Hebrew (Windows 1255)</source>
        <translation>ヘブライ語 (Windows 1255)</translation>
    </message>
    <message>
        <source>Hebrew (ISO 8859-8)</source>
        <translation>ヘブライ語 (ISO 8859-8)</translation>
    </message>
    <message>
        <source>Hebrew (DOS 862)</source>
        <translation>ヘブライ語 (DOS 862)</translation>
    </message>
    <message>
        <source>Arabic (Windows 1256)</source>
        <translation>アラビア語 (Windows 1256)</translation>
    </message>
    <message>
        <source>Arabic (ISO 8859-6)</source>
        <translation>アラビア語 (ISO 8859-6)</translation>
    </message>
    <message>
        <source>Arabic (DOS 864)</source>
        <translation>アラビア語 (DOS 864)</translation>
    </message>
    <message>
        <source>Baltic (Windows 1257)</source>
        <translation>バルト語 (Windows 1257)</translation>
    </message>
    <message>
        <source>Baltic (ISO Latin 4)</source>
        <translation>バルト語 (ISO Latin 4)</translation>
    </message>
    <message>
        <source>Baltic (ISO Latin 7)</source>
        <translation>バルト語 (ISO Latin 7)</translation>
    </message>
    <message>
        <source>Baltic (DOS 775)</source>
        <translation>バルト語 (DOS 775)</translation>
    </message>
    <message>
        <source>Vietnamese (Windows 1258)</source>
        <translation>ベトナム語 (Windows 1258)</translation>
    </message>
    <message>
        <source>Thai (Windows 874)</source>
        <translation>タイ語 (Windows 874)</translation>
    </message>
    <message>
        <source>South European (ISO Latin 3)</source>
        <translation>南ヨーロッパ (ISO Latin 3)</translation>
    </message>
    <message>
        <source>Nordic (ISO Latin 6)</source>
        <translation>北欧 (ISO Latin 6)</translation>
    </message>
    <message>
        <source>Celtic (ISO Latin 8)</source>
        <translation>ケルト語 (ISO Latin 8)</translation>
    </message>
    <message>
        <source>Nordic (DOS 865)</source>
        <translation>北欧 (DOS 865)</translation>
    </message>
    <message>
        <source>Portuguese (DOS 860)</source>
        <translation>ポルトガル語 (DOS 860)</translation>
    </message>
    <message>
        <source>Canadian French (DOS 863)</source>
        <translation>カナダフランス語 (DOS 863)</translation>
    </message>
    <message>
        <source>Icelandic (DOS 861)</source>
        <translation>アイスランド語 (DOS 861)</translation>
    </message>
</context>
<context>
    <name>CommandLine</name>
    <message>
        <source>there is no option &quot;%1&quot;</source>
        <translation>「%1」というオプションはありません</translation>
    </message>
    <message>
        <source>&quot;--extract-to&quot; needs a folder</source>
        <translation>「--extract-to」にはフォルダーの指定が必要です</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a file here</source>
        <translation>「%1」はローカルのファイルではありません</translation>
    </message>
    <message>
        <source>no archive is given</source>
        <translation>アーカイブが指定されていません</translation>
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
        <translation>使い方: vantoro [オプション] [ファイル...]

アーカイブを開きます。設定により、展開するか中身を表示します。
アーカイブを指定しないと、メインウインドウを表示します。

  --extract-here         各アーカイブと同じ場所に展開する
  --extract-to フォルダー  指定したフォルダーに展開する
  --extract-to-desktop   設定のデスクトップフォルダーに展開する
  --extract-ask          展開先を尋ねる
  --extract              設定に従って展開する、または尋ねる
  --compress             ファイルからアーカイブを作成する
  --dbus-service         セッションバスからの呼び出しを待つ
  -h, --help             このヘルプを表示する
  --version              バージョンを表示する
  --                     これ以降はすべてファイル

ファイルはパスまたは file:// URI で指定します。画面なしで使うには vantoro-cli があります。
</translation>
    </message>
</context>
<context>
    <name>EntryPreviewer</name>
    <message>
        <source>Reading “%1”…</source>
        <translation>「%1」を読み込み中…</translation>
    </message>
</context>
<context>
    <name>ExtractionSummary</name>
    <message>
        <source>&quot;%1&quot; was extracted</source>
        <translation>「%1」を展開しました</translation>
    </message>
    <message numerus="yes">
        <source>%n archive(s) were extracted</source>
        <translation>
            <numerusform>%n 個のアーカイブを展開しました</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; could not be extracted</source>
        <translation>「%1」を展開できませんでした</translation>
    </message>
    <message>
        <source>%1 of %2 archives could not be extracted</source>
        <translation>%2 個中 %1 個のアーカイブを展開できませんでした</translation>
    </message>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>ほか %n 個</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; in %2</source>
        <translation>%2 に「%1」</translation>
    </message>
    <message numerus="yes">
        <source>%n entry(s) were damaged or refused</source>
        <translation>
            <numerusform>%n 個の項目が破損しているか、拒否されました</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>FilePreview</name>
    <message numerus="yes">
        <source>%n item(s)</source>
        <translation>
            <numerusform>%n 項目</numerusform>
        </translation>
    </message>
    <message>
        <source>Cannot be read</source>
        <translation>読み込めません</translation>
    </message>
</context>
<context>
    <name>Formats</name>
    <message>
        <source>RPM package</source>
        <translation>RPM パッケージ</translation>
    </message>
    <message>
        <source>tar archive</source>
        <translation>tar アーカイブ</translation>
    </message>
    <message>
        <source>RAR archive</source>
        <translation>RAR アーカイブ</translation>
    </message>
    <message>
        <source>ARJ archive</source>
        <translation>ARJ アーカイブ</translation>
    </message>
    <message>
        <source>cpio archive</source>
        <translation>cpio アーカイブ</translation>
    </message>
    <message>
        <source>ISO 9660 disc image</source>
        <translation>ISO 9660 ディスクイメージ</translation>
    </message>
    <message>
        <source>gzip file</source>
        <translation>gzip ファイル</translation>
    </message>
    <message>
        <source>bzip2 file</source>
        <translation>bzip2 ファイル</translation>
    </message>
    <message>
        <source>xz file</source>
        <translation>xz ファイル</translation>
    </message>
    <message>
        <source>Zstandard file</source>
        <translation>Zstandard ファイル</translation>
    </message>
    <message>
        <source>LZ4 file</source>
        <translation>LZ4 ファイル</translation>
    </message>
    <message>
        <source>lzip file</source>
        <translation>lzip ファイル</translation>
    </message>
    <message>
        <source>lzop file</source>
        <translation>lzop ファイル</translation>
    </message>
    <message>
        <source>Unix compress file</source>
        <translation>Unix compress ファイル</translation>
    </message>
    <message>
        <source>LZMA file</source>
        <translation>LZMA ファイル</translation>
    </message>
    <message>
        <source>zlib stream</source>
        <translation>zlib ストリーム</translation>
    </message>
    <message>
        <source>Brotli file</source>
        <translation>Brotli ファイル</translation>
    </message>
    <message>
        <source>Zip archive</source>
        <translation>Zip アーカイブ</translation>
    </message>
    <message>
        <source>LHA archive</source>
        <translation>LHA アーカイブ</translation>
    </message>
    <message>
        <source>PMarc archive</source>
        <translation>PMarc アーカイブ</translation>
    </message>
    <message>
        <source>Unix archive or Debian package</source>
        <translation>Unix アーカイブまたは Debian パッケージ</translation>
    </message>
    <message>
        <source>xar archive</source>
        <translation>xar アーカイブ</translation>
    </message>
    <message>
        <source>Web archive</source>
        <translation>ウェブアーカイブ</translation>
    </message>
    <message>
        <source>NSIS installer</source>
        <translation>NSIS インストーラー</translation>
    </message>
    <message>
        <source>7z archive</source>
        <translation>7z アーカイブ</translation>
    </message>
    <message>
        <source>Cabinet</source>
        <translation>キャビネット</translation>
    </message>
    <message>
        <source>Windows installer package</source>
        <translation>Windows インストーラーパッケージ</translation>
    </message>
    <message>
        <source>Compound file</source>
        <translation>複合ファイル</translation>
    </message>
    <message>
        <source>Compiled help</source>
        <translation>コンパイル済みヘルプ</translation>
    </message>
    <message>
        <source>Compiled help 2</source>
        <translation>コンパイル済みヘルプ 2</translation>
    </message>
    <message>
        <source>Windows image</source>
        <translation>Windows イメージ</translation>
    </message>
    <message>
        <source>UDF disc image</source>
        <translation>UDF ディスクイメージ</translation>
    </message>
    <message>
        <source>SquashFS image</source>
        <translation>SquashFS イメージ</translation>
    </message>
    <message>
        <source>CramFS image</source>
        <translation>CramFS イメージ</translation>
    </message>
    <message>
        <source>macOS disk image</source>
        <translation>macOS ディスクイメージ</translation>
    </message>
    <message>
        <source>Virtual disk</source>
        <translation>仮想ディスク</translation>
    </message>
    <message>
        <source>NTFS image</source>
        <translation>NTFS イメージ</translation>
    </message>
    <message>
        <source>APFS image</source>
        <translation>APFS イメージ</translation>
    </message>
    <message>
        <source>HFS+ image</source>
        <translation>HFS+ イメージ</translation>
    </message>
    <message>
        <source>FAT image</source>
        <translation>FAT イメージ</translation>
    </message>
    <message>
        <source>ext file system image</source>
        <translation>ext ファイルシステムイメージ</translation>
    </message>
    <message>
        <source>Disk image</source>
        <translation>ディスクイメージ</translation>
    </message>
</context>
<context>
    <name>InformationWindow</name>
    <message>
        <source>Windows and the desktop</source>
        <translation>ウインドウとデスクトップ</translation>
    </message>
    <message>
        <source>Reads many formats, writes 7z</source>
        <translation>多くの形式を読み込み、7z を書き出す</translation>
    </message>
    <message>
        <source>Reads and writes further formats</source>
        <translation>そのほかの形式の読み書き</translation>
    </message>
    <message>
        <source>LHA methods</source>
        <translation>LHA の圧縮方式</translation>
    </message>
    <message>
        <source>Deflate, whole blocks</source>
        <translation>Deflate (ブロック単位)</translation>
    </message>
    <message>
        <source>Deflate, streams</source>
        <translation>Deflate (ストリーム)</translation>
    </message>
    <message>
        <source>Deflate, writing</source>
        <translation>Deflate (書き出し)</translation>
    </message>
    <message>
        <source>xz and lzma</source>
        <translation>xz と lzma</translation>
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
        <translation>ZIP 内の WAV ファイル</translation>
    </message>
    <message>
        <source>Ciphers and checksums</source>
        <translation>暗号化とチェックサム</translation>
    </message>
    <message>
        <source>Text encodings</source>
        <translation>文字コード</translation>
    </message>
    <message>
        <source>Finding an encoding out</source>
        <translation>文字コードの判別</translation>
    </message>
    <message>
        <source>Confines the decoders</source>
        <translation>デコーダーの隔離</translation>
    </message>
    <message>
        <source>Strength of passwords</source>
        <translation>パスワードの強度</translation>
    </message>
</context>
<context>
    <name>KXUnarchiveWrapper</name>
    <message>
        <source>“%1” is too large to be shown: it has %2, and at most %3 are read for a preview.</source>
        <translation>「%1」は大きすぎて表示できません。サイズは %2 で、プレビューで読み込めるのは %3 までです。</translation>
    </message>
    <message>
        <source>more than that</source>
        <translation>それ以上</translation>
    </message>
    <message>
        <source>“%1” is encrypted, and the password does not fit.</source>
        <translation>「%1」は暗号化されており、パスワードが一致しません。</translation>
    </message>
    <message>
        <source>“%1” cannot be read: %2.</source>
        <translation>「%1」を読み込めません: %2。</translation>
    </message>
</context>
<context>
    <name>MainPages</name>
    <message>
        <source>Compress</source>
        <translation>圧縮</translation>
    </message>
    <message>
        <source>Extract</source>
        <translation>展開</translation>
    </message>
</context>
<context>
    <name>PackKinds</name>
    <message>
        <source>Zip archive</source>
        <translation>Zip アーカイブ</translation>
    </message>
    <message>
        <source>7-Zip archive</source>
        <translation>7-Zip アーカイブ</translation>
    </message>
    <message>
        <source>Gzip-compressed tar</source>
        <translation>tar (gzip 圧縮)</translation>
    </message>
    <message>
        <source>XZ-compressed tar</source>
        <translation>tar (xz 圧縮)</translation>
    </message>
    <message>
        <source>Zstandard-compressed tar</source>
        <translation>tar (Zstandard 圧縮)</translation>
    </message>
    <message>
        <source>Bzip2-compressed tar</source>
        <translation>tar (bzip2 圧縮)</translation>
    </message>
    <message>
        <source>Tar archive</source>
        <translation>tar アーカイブ</translation>
    </message>
    <message>
        <source>LZ4-compressed tar</source>
        <translation>tar (LZ4 圧縮)</translation>
    </message>
    <message>
        <source>Cpio archive</source>
        <translation>cpio アーカイブ</translation>
    </message>
    <message>
        <source>CD image (ISO 9660)</source>
        <translation>CD イメージ (ISO 9660)</translation>
    </message>
    <message>
        <source>Xar archive</source>
        <translation>xar アーカイブ</translation>
    </message>
    <message>
        <source>Ar archive</source>
        <translation>ar アーカイブ</translation>
    </message>
    <message>
        <source>Java archive</source>
        <translation>Java アーカイブ</translation>
    </message>
    <message>
        <source>Comic book archive</source>
        <translation>コミックアーカイブ</translation>
    </message>
    <message>
        <source>Gzip-compressed file</source>
        <translation>gzip 圧縮ファイル</translation>
    </message>
    <message>
        <source>XZ-compressed file</source>
        <translation>xz 圧縮ファイル</translation>
    </message>
    <message>
        <source>Zstandard-compressed file</source>
        <translation>Zstandard 圧縮ファイル</translation>
    </message>
    <message>
        <source>Bzip2-compressed file</source>
        <translation>bzip2 圧縮ファイル</translation>
    </message>
    <message>
        <source>LZ4-compressed file</source>
        <translation>LZ4 圧縮ファイル</translation>
    </message>
</context>
<context>
    <name>PasswordGate</name>
    <message>
        <source>Checking the password…</source>
        <translation>パスワードを確認中…</translation>
    </message>
</context>
<context>
    <name>PasswordStrength</name>
    <message>
        <source>Weak</source>
        <translation>弱い</translation>
    </message>
    <message>
        <source>Fair</source>
        <translation>やや弱い</translation>
    </message>
    <message>
        <source>Good</source>
        <translation>良い</translation>
    </message>
    <message>
        <source>Strong</source>
        <translation>強い</translation>
    </message>
</context>
<context>
    <name>PreviewContent</name>
    <message>
        <source>This picture cannot be shown: it is damaged, or too large to decode.</source>
        <translation>この画像は表示できません。破損しているか、大きすぎます。</translation>
    </message>
    <message>
        <source>%1 × %2 pixels</source>
        <translation>%1 × %2 ピクセル</translation>
    </message>
    <message>
        <source>The beginning of %1</source>
        <translation>%1 の先頭部分</translation>
    </message>
    <message>
        <source>This file is empty.</source>
        <translation>このファイルは空です。</translation>
    </message>
    <message>
        <source>There is no preview for this kind of file.</source>
        <translation>この種類はプレビューできません。</translation>
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
        <translation>%2 ファイル中 %1</translation>
    </message>
    <message>
        <source>A few seconds left</source>
        <translation>残り数秒</translation>
    </message>
    <message numerus="yes">
        <source>About %n seconds left</source>
        <translation>
            <numerusform>残り約 %n 秒</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>About %n minute(s) left</source>
        <translation>
            <numerusform>残り約 %n 分</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>About %n hour(s) left</source>
        <translation>
            <numerusform>残り約 %n 時間</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>QFileDialog</name>
    <message>
        <source>Allowed files (%1)</source>
        <translation>選択できるファイル (%1)</translation>
    </message>
</context>
<context>
    <name>XADException</name>
    <message>
        <source>an internal error occurred</source>
        <translation>内部エラーが発生しました</translation>
    </message>
    <message>
        <source>stopped by the user</source>
        <translation>ユーザーが中止しました</translation>
    </message>
    <message>
        <source>reading the archive failed</source>
        <translation>アーカイブの読み込みに失敗しました</translation>
    </message>
    <message>
        <source>this is not an archive of a known format</source>
        <translation>既知の形式のアーカイブではありません</translation>
    </message>
    <message>
        <source>the archive ends too early</source>
        <translation>アーカイブが途中で終わっています</translation>
    </message>
    <message>
        <source>the archive is damaged</source>
        <translation>アーカイブが破損しています</translation>
    </message>
    <message>
        <source>the data are damaged (wrong checksum)</source>
        <translation>データが破損しています (チェックサムの不一致)</translation>
    </message>
    <message>
        <source>the data are damaged (wrong size)</source>
        <translation>データが破損しています (サイズの不一致)</translation>
    </message>
    <message>
        <source>the compression method is not supported</source>
        <translation>この圧縮方式には対応していません</translation>
    </message>
    <message>
        <source>the kind of encryption is not supported</source>
        <translation>この暗号化方式には対応していません</translation>
    </message>
    <message>
        <source>the archive uses a feature that is not supported</source>
        <translation>アーカイブに未対応の機能が使われています</translation>
    </message>
    <message>
        <source>a password is needed</source>
        <translation>パスワードが必要です</translation>
    </message>
    <message>
        <source>the password is wrong, or the data are damaged</source>
        <translation>パスワードが違うか、データが破損しています</translation>
    </message>
    <message>
        <source>a part of the archive is missing</source>
        <translation>アーカイブの一部が見つかりません</translation>
    </message>
    <message>
        <source>the archive asks for more than is allowed</source>
        <translation>アーカイブの要求が許容量を超えています</translation>
    </message>
    <message>
        <source>there is not enough memory</source>
        <translation>メモリーが足りません</translation>
    </message>
    <message>
        <source>the reader for this format stopped unexpectedly</source>
        <translation>この形式の読み込み処理が予期せず終了しました</translation>
    </message>
    <message>
        <source>the reader for this format does not get on</source>
        <translation>この形式の読み込み処理が進みません</translation>
    </message>
    <message>
        <source>entries of the archive overlap, as in a forged archive</source>
        <translation>偽造されたアーカイブのように、項目が重なり合っています</translation>
    </message>
    <message>
        <source>the name is not safe</source>
        <translation>名前が安全ではありません</translation>
    </message>
    <message>
        <source>the link leads out of the destination folder</source>
        <translation>リンクが展開先フォルダーの外を指しています</translation>
    </message>
    <message>
        <source>devices, pipes and sockets are not created</source>
        <translation>デバイス、パイプ、ソケットは作成されません</translation>
    </message>
    <message>
        <source>the entry was refused</source>
        <translation>項目は拒否されました</translation>
    </message>
    <message>
        <source>the name is already taken</source>
        <translation>その名前はすでに使われています</translation>
    </message>
    <message>
        <source>the disk is full</source>
        <translation>ディスクがいっぱいです</translation>
    </message>
    <message>
        <source>writing failed</source>
        <translation>書き込みに失敗しました</translation>
    </message>
    <message>
        <source>the destination folder cannot be written to</source>
        <translation>展開先フォルダーに書き込めません</translation>
    </message>
    <message>
        <source>the destination folder has vanished</source>
        <translation>展開先フォルダーがなくなりました</translation>
    </message>
    <message>
        <source>the archive would grow out of proportion</source>
        <translation>展開すると極端に大きくなるアーカイブです</translation>
    </message>
    <message>
        <source>the encoding of the file names is not known</source>
        <translation>ファイル名の文字コードが不明です</translation>
    </message>
    <message>
        <source>the file cannot be read</source>
        <translation>ファイルを読み込めません</translation>
    </message>
    <message>
        <source>archives of this kind cannot be created</source>
        <translation>この種類のアーカイブは作成できません</translation>
    </message>
    <message>
        <source>something unknown follows the end of the compressed data</source>
        <translation>圧縮データの末尾の後に不明なデータがあります</translation>
    </message>
    <message>
        <source>the program was updated while it runs; please start it again</source>
        <translation>プログラムが実行中に更新されました。もう一度起動してください</translation>
    </message>
    <message>
        <source>an unknown error occurred</source>
        <translation>不明なエラーが発生しました</translation>
    </message>
</context>
<context>
    <name>vantoro::AppCommands</name>
    <message>
        <source>Extract page</source>
        <translation>展開ページ</translation>
    </message>
    <message>
        <source>Compress page</source>
        <translation>圧縮ページ</translation>
    </message>
    <message>
        <source>Next page</source>
        <translation>次のページ</translation>
    </message>
    <message>
        <source>Preview the chosen entry</source>
        <translation>選択した項目をプレビュー</translation>
    </message>
    <message>
        <source>Filter entries</source>
        <translation>項目を絞り込む</translation>
    </message>
    <message>
        <source>Choose everything</source>
        <translation>すべて選択</translation>
    </message>
    <message>
        <source>Open or close a folder of the archive</source>
        <translation>アーカイブ内のフォルダーを開閉</translation>
    </message>
    <message>
        <source>Stop what runs, close a question or a preview</source>
        <translation>実行中の処理を中止、質問やプレビューを閉じる</translation>
    </message>
</context>
<context>
    <name>vantoro::AppDelegate</name>
    <message>
        <source>Select archives to extract</source>
        <translation>展開するアーカイブを選択</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>選択</translation>
    </message>
    <message>
        <source>Please select the extracted destination</source>
        <translation>展開先を選択してください</translation>
    </message>
    <message>
        <source>Extract</source>
        <translation>展開</translation>
    </message>
</context>
<context>
    <name>vantoro::ArchiveTreeModel</name>
    <message>
        <source>Name</source>
        <translation>名前</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>サイズ</translation>
    </message>
    <message>
        <source>Modified</source>
        <translation>更新日時</translation>
    </message>
</context>
<context>
    <name>vantoro::ChosenExtraction</name>
    <message>
        <source>Please select the destination</source>
        <translation>保存先を選択してください</translation>
    </message>
    <message>
        <source>Extract</source>
        <translation>展開</translation>
    </message>
    <message>
        <source>Extracting…</source>
        <translation>展開中…</translation>
    </message>
</context>
<context>
    <name>vantoro::CompressWindow</name>
    <message>
        <source>Start</source>
        <translation>開始</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>Compression Options</source>
        <translation>圧縮オプション</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>形式</translation>
    </message>
    <message>
        <source>None</source>
        <translation>なし</translation>
    </message>
    <message>
        <source>Type it once more</source>
        <translation>もう一度入力</translation>
    </message>
    <message>
        <source>Repeat the password</source>
        <translation>パスワードを再入力</translation>
    </message>
    <message>
        <source>Format:</source>
        <translation>形式:</translation>
    </message>
    <message>
        <source>Password:</source>
        <translation>パスワード:</translation>
    </message>
    <message>
        <source>Repeat:</source>
        <translation>再入力:</translation>
    </message>
    <message>
        <source>The two passwords differ.</source>
        <translation>2 つのパスワードが一致しません。</translation>
    </message>
</context>
<context>
    <name>vantoro::ContentsPresenter</name>
    <message>
        <source>Opening “%1”…</source>
        <translation>「%1」を開いています…</translation>
    </message>
    <message numerus="yes">
        <source>%Ln entries extracted</source>
        <translation>
            <numerusform>%Ln 項目を展開しました</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1, and %Ln more failed</source>
        <translation>
            <numerusform>%1、ほか %Ln 件の失敗</numerusform>
        </translation>
    </message>
    <message>
        <source>The list is incomplete: %1</source>
        <translation>一覧は不完全です: %1</translation>
    </message>
</context>
<context>
    <name>vantoro::EncodingPanel</name>
    <message>
        <source>Stop</source>
        <translation>中止</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>続ける</translation>
    </message>
    <message>
        <source>The file names in &quot;%1&quot; do not say how they are written. Choose the encoding in which this name reads right:</source>
        <translation>「%1」のファイル名には文字コードの情報がありません。この名前が正しく読める文字コードを選んでください:</translation>
    </message>
    <message>
        <source>This name would read: %1</source>
        <translation>この名前の表示: %1</translation>
    </message>
</context>
<context>
    <name>vantoro::ExtractionReporter</name>
    <message>
        <source>Show in Folder</source>
        <translation>フォルダーに表示</translation>
    </message>
    <message>
        <source>Show Report</source>
        <translation>レポートを表示</translation>
    </message>
</context>
<context>
    <name>vantoro::HDAlert</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>vantoro::HowToUseWindow</name>
    <message>
        <source>How to Use</source>
        <translation>使い方</translation>
    </message>
    <message>
        <source>Extract</source>
        <translation>展開</translation>
    </message>
    <message>
        <source>Drop archives on the window, or open them in the file manager. They come out one after another; whatever must be asked is asked in the archive&apos;s own row.</source>
        <translation>アーカイブをウインドウにドロップするか、ファイルマネージャーで開いてください。順番に展開され、確認が必要な場合はそのアーカイブの行に表示されます。</translation>
    </message>
    <message>
        <source>Look inside</source>
        <translation>中身を見る</translation>
    </message>
    <message>
        <source>With &quot;Look inside before extracting&quot; in the settings, an opened archive shows what it holds. Press Space to preview an entry, and extract all of it or only what you choose.</source>
        <translation>設定で「展開する前に中身を見る」を選ぶと、開いたアーカイブの中身が表示されます。スペースキーで項目をプレビューし、すべて、または選んだものだけを展開できます。</translation>
    </message>
    <message>
        <source>Compress</source>
        <translation>圧縮</translation>
    </message>
    <message>
        <source>Drop files and folders on the Compress page, choose a kind and, if you like, a password, and say where the archive is to be written.</source>
        <translation>圧縮ページにファイルやフォルダーをドロップし、種類と、必要ならパスワードを選んで、アーカイブの保存先を指定してください。</translation>
    </message>
    <message>
        <source>From the file manager</source>
        <translation>ファイルマネージャーから</translation>
    </message>
    <message>
        <source>The menu of an archive offers to extract it there, to the Desktop, or to a folder of your choice.</source>
        <translation>アーカイブのメニューから、その場所、デスクトップ、または選んだフォルダーに展開できます。</translation>
    </message>
    <message>
        <source>Always at hand</source>
        <translation>いつでも使えます</translation>
    </message>
    <message>
        <source>Vantoro goes on running when its windows are closed. Its icon in the tray brings them back, and Quit ends it.</source>
        <translation>ウインドウを閉じても Vantoro は動作を続けます。トレイのアイコンから再表示でき、「終了」で終了します。</translation>
    </message>
</context>
<context>
    <name>vantoro::InformationWindow</name>
    <message>
        <source>About Vantoro</source>
        <translation>Vantoro について</translation>
    </message>
    <message>
        <source>&amp;Formats</source>
        <translation>形式(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Libraries</source>
        <translation>ライブラリ(&amp;L)</translation>
    </message>
    <message>
        <source>Vantoro</source>
        <translation>Vantoro</translation>
    </message>
    <message>
        <source>Version %1, with Qt %2</source>
        <translation>バージョン %1 (Qt %2)</translation>
    </message>
    <message>
        <source>Free software under the GNU General Public License, version 3 or later.</source>
        <translation>GNU General Public License バージョン 3 以降に基づくフリーソフトウェアです。</translation>
    </message>
    <message>
        <source>Find a format or an extension</source>
        <translation>形式または拡張子を検索</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>形式</translation>
    </message>
    <message>
        <source>Extensions</source>
        <translation>拡張子</translation>
    </message>
    <message>
        <source>Formats that can be read</source>
        <translation>読み込める形式</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>ライブラリ</translation>
    </message>
    <message>
        <source>Use</source>
        <translation>用途</translation>
    </message>
    <message>
        <source>Licence</source>
        <translation>ライセンス</translation>
    </message>
    <message>
        <source>Libraries in use</source>
        <translation>使用しているライブラリ</translation>
    </message>
</context>
<context>
    <name>vantoro::KXArchiveContentsViewController</name>
    <message>
        <source>Extract</source>
        <translation>展開</translation>
    </message>
    <message>
        <source>Please select the archive</source>
        <translation>アーカイブを選択してください</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>選択</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>プレビュー</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>閉じる</translation>
    </message>
    <message>
        <source>Filter by name</source>
        <translation>名前で絞り込む</translation>
    </message>
    <message>
        <source>Open…</source>
        <translation>開く…</translation>
    </message>
    <message>
        <source>Choose another archive</source>
        <translation>別のアーカイブを選択</translation>
    </message>
    <message>
        <source>Extract what is selected, or everything (Ctrl+E)</source>
        <translation>選択したもの、またはすべてを展開 (Ctrl+E)</translation>
    </message>
    <message>
        <source>Look at the selected file (Space)</source>
        <translation>選択したファイルを見る (スペース)</translation>
    </message>
    <message>
        <source>Close the archive</source>
        <translation>アーカイブを閉じる</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>設定</translation>
    </message>
    <message>
        <source>Close Folder</source>
        <translation>フォルダーを閉じる</translation>
    </message>
    <message>
        <source>Open Folder</source>
        <translation>フォルダーを開く</translation>
    </message>
    <message>
        <source>Extract All</source>
        <translation>すべて展開</translation>
    </message>
    <message>
        <source>Contents of %1</source>
        <translation>%1 の内容</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>情報</translation>
    </message>
    <message>
        <source>DO NOT support quicklook this archive, please close &apos;Preview an archive&apos;s file list without extraction&apos; in Preferences Panel to extract directly</source>
        <translation>このアーカイブの中身は表示できません。直接展開するには、設定で「展開する前に中身を見る」をオフにしてください。</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Wrong Password!</source>
        <translation>パスワードが違います!</translation>
    </message>
    <message>
        <source>This archive is empty</source>
        <translation>このアーカイブは空です</translation>
    </message>
    <message>
        <source>Extract…</source>
        <translation>展開…</translation>
    </message>
    <message>
        <source>Extract All…</source>
        <translation>すべて展開…</translation>
    </message>
    <message>
        <source>Extract to &quot;%1&quot;</source>
        <translation>「%1」に展開</translation>
    </message>
    <message>
        <source>Extract All to &quot;%1&quot;</source>
        <translation>「%1」にすべて展開</translation>
    </message>
</context>
<context>
    <name>vantoro::KXArchiveManageController</name>
    <message>
        <source>DO NOT support unarchive this archive due to the format error.</source>
        <translation>形式にエラーがあるため、このアーカイブは展開できません。</translation>
    </message>
    <message>
        <source>ERROR happened while reading the contents of the file &quot;%1&quot;: %2</source>
        <translation>ファイル「%1」の内容を読み込むときにエラーが発生しました: %2</translation>
    </message>
    <message>
        <source>ERROR happened while extracting the contents of the file &quot;%1&quot;: %2</source>
        <translation>ファイル「%1」の内容を展開するときにエラーが発生しました: %2</translation>
    </message>
    <message>
        <source>the result could not be moved into the folder &quot;%1&quot;</source>
        <translation>結果をフォルダー「%1」に移動できませんでした</translation>
    </message>
    <message>
        <source>The archive could not be moved to the Trash.</source>
        <translation>アーカイブをゴミ箱に移動できませんでした。</translation>
    </message>
    <message>
        <source>DO NOT extract the files &quot;%1&quot; from the archive &quot;%2&quot;:
%3</source>
        <translation>ファイル「%1」をアーカイブ「%2」から展開できませんでした:
%3</translation>
    </message>
    <message>
        <source>DO NOT extract the files &quot;%1&quot; from archive &quot;%2&quot;: %3</source>
        <translation>ファイル「%1」をアーカイブ「%2」から展開できませんでした: %3</translation>
    </message>
    <message>
        <source>The archive &quot;%1&quot; of %2 would unpack to %3. Archives that are made to fill a disk look like this.</source>
        <translation>アーカイブ「%1」(%2) を展開すると %3 になります。ディスクをいっぱいにするために作られたアーカイブの特徴です。</translation>
    </message>
    <message>
        <source>The contents of the archive &quot;%1&quot; need %2, but only %3 are free in the destination.</source>
        <translation>アーカイブ「%1」の内容には %2 が必要ですが、展開先の空き容量は %3 しかありません。</translation>
    </message>
    <message>
        <source>The archive &quot;%1&quot; of %2 holds %3 entries.</source>
        <translation>アーカイブ「%1」(%2) には %3 個の項目があります。</translation>
    </message>
    <message>
        <source>The archive &quot;%1&quot; could not be read to its end: %2</source>
        <translation>アーカイブ「%1」を最後まで読み込めませんでした: %2</translation>
    </message>
</context>
<context>
    <name>vantoro::KXArchiveTaskView</name>
    <message>
        <source>%1 (+%2 more)</source>
        <translation>%1 (ほか %2 個)</translation>
    </message>
    <message>
        <source>Preparing to extract &quot;%1&quot;</source>
        <translation>「%1」の展開を準備中</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>中止</translation>
    </message>
    <message>
        <source>Extract to Desktop</source>
        <translation>デスクトップに展開</translation>
    </message>
    <message>
        <source>Choose Folder…</source>
        <translation>フォルダーを選択…</translation>
    </message>
    <message>
        <source>You may not write to the folder &quot;%1&quot;. Where should &quot;%2&quot; be extracted to?</source>
        <translation>フォルダー「%1」には書き込めません。「%2」をどこに展開しますか?</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>続ける</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Extracting &quot;%1&quot;</source>
        <translation>「%1」を展開中</translation>
    </message>
</context>
<context>
    <name>vantoro::KXDropArchiveView</name>
    <message>
        <source>Drop an archive here</source>
        <translation>アーカイブをここにドロップ</translation>
    </message>
    <message>
        <source>to look inside, preview and extract what you need</source>
        <translation>中身を確認し、必要なものだけを展開できます</translation>
    </message>
    <message>
        <source>Choose an Archive…</source>
        <translation>アーカイブを選択…</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>情報</translation>
    </message>
    <message>
        <source>ONLY preview one archive at a time</source>
        <translation>一度に表示できるアーカイブは 1 つだけです</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>vantoro::KXDropFilesView</name>
    <message>
        <source>Drop files and folders here to compress them</source>
        <translation>圧縮するファイルやフォルダーをここにドロップ</translation>
    </message>
    <message>
        <source>or choose them from your folders</source>
        <translation>またはフォルダーから選択してください</translation>
    </message>
    <message>
        <source>Add Files…</source>
        <translation>ファイルを追加…</translation>
    </message>
</context>
<context>
    <name>vantoro::KXEncodePopButton</name>
    <message>
        <source>Text encoding</source>
        <translation>文字コード</translation>
    </message>
    <message>
        <source>AUTO Dectect</source>
        <translation>自動判別</translation>
    </message>
    <message>
        <source>Default encoding</source>
        <translation>既定の文字コード</translation>
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
        <translation>メニュー(&amp;M)</translation>
    </message>
    <message>
        <source>How to use</source>
        <translation>使い方</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>設定</translation>
    </message>
</context>
<context>
    <name>vantoro::KXPackViewController</name>
    <message>
        <source>Compress</source>
        <translation>圧縮</translation>
    </message>
    <message>
        <source>Please select the files</source>
        <translation>ファイルを選択してください</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>選択</translation>
    </message>
    <message numerus="yes">
        <source>%n item(s)</source>
        <translation>
            <numerusform>%n 項目</numerusform>
        </translation>
    </message>
    <message>
        <source>Please select the destination</source>
        <translation>保存先を選択してください</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>情報</translation>
    </message>
    <message>
        <source>Please drag files and folers here!</source>
        <translation>ここにファイルやフォルダーをドラッグしてください!</translation>
    </message>
    <message>
        <source>Compressing…</source>
        <translation>圧縮しています…</translation>
    </message>
    <message>
        <source>Add…</source>
        <translation>追加…</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>消去</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>形式</translation>
    </message>
    <message>
        <source>Options…</source>
        <translation>オプション…</translation>
    </message>
    <message>
        <source>&amp;Format</source>
        <translation>形式(&amp;F)</translation>
    </message>
    <message>
        <source>None</source>
        <translation>なし</translation>
    </message>
    <message>
        <source>&amp;Password</source>
        <translation>パスワード(&amp;P)</translation>
    </message>
</context>
<context>
    <name>vantoro::KXTableCellView</name>
    <message>
        <source>Preview</source>
        <translation>プレビュー</translation>
    </message>
    <message>
        <source>Remove from the list</source>
        <translation>リストから削除</translation>
    </message>
    <message>
        <source>Preview %1</source>
        <translation>%1 をプレビュー</translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation>%1 を削除</translation>
    </message>
</context>
<context>
    <name>vantoro::KXTaskListsView</name>
    <message>
        <source>Extractions</source>
        <translation>展開</translation>
    </message>
</context>
<context>
    <name>vantoro::MainWindows</name>
    <message>
        <source>Stop compressing and quit?</source>
        <translation>圧縮を中止して終了しますか?</translation>
    </message>
    <message>
        <source>An archive is being written. It will not be kept.</source>
        <translation>アーカイブを作成中です。作成中のものは破棄されます。</translation>
    </message>
    <message>
        <source>Stop extracting and quit?</source>
        <translation>展開を中止して終了しますか?</translation>
    </message>
    <message>
        <source>An archive is being extracted. What is not finished is removed.</source>
        <translation>アーカイブを展開中です。完了していないものは削除されます。</translation>
    </message>
    <message>
        <source>Go On</source>
        <translation>続ける</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>終了</translation>
    </message>
</context>
<context>
    <name>vantoro::PackTable</name>
    <message>
        <source>Files to compress</source>
        <translation>圧縮するファイル</translation>
    </message>
</context>
<context>
    <name>vantoro::PasswordField</name>
    <message>
        <source>Password</source>
        <translation>パスワード</translation>
    </message>
    <message>
        <source>Caps Lock is on</source>
        <translation>Caps Lock がオンです</translation>
    </message>
    <message>
        <source>Hide password</source>
        <translation>パスワードを隠す</translation>
    </message>
    <message>
        <source>Show password</source>
        <translation>パスワードを表示</translation>
    </message>
</context>
<context>
    <name>vantoro::PasswordPanel</name>
    <message>
        <source>Password &amp;encoding:</source>
        <translation>パスワードの文字コード(&amp;E):</translation>
    </message>
    <message>
        <source>Password encoding</source>
        <translation>パスワードの文字コード</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>中止</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>続ける</translation>
    </message>
    <message>
        <source>Enter a PASSWORD to open the archive &quot;%1&quot;.</source>
        <translation>アーカイブ「%1」を開くにはパスワードを入力してください。</translation>
    </message>
    <message>
        <source>That password is not right. Please try again.</source>
        <translation>パスワードが違います。もう一度入力してください。</translation>
    </message>
    <message>
        <source>Caps Lock is on.</source>
        <translation>Caps Lock がオンです。</translation>
    </message>
</context>
<context>
    <name>vantoro::PasswordPrompt</name>
    <message>
        <source>Caps Lock is on</source>
        <translation>Caps Lock がオンです</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>パスワード</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>“%1” is encrypted. Which password opens it?</source>
        <translation>「%1」は暗号化されています。開くためのパスワードを入力してください。</translation>
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
        <translation>アーカイブを展開…</translation>
    </message>
    <message>
        <source>Open Main Window</source>
        <translation>メインウインドウを開く</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>設定</translation>
    </message>
    <message>
        <source>How to Use</source>
        <translation>使い方</translation>
    </message>
    <message>
        <source>Quit Vantoro</source>
        <translation>Vantoro を終了</translation>
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
        <translation>開く</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>プレビュー</translation>
    </message>
    <message>
        <source>Contents</source>
        <translation>内容</translation>
    </message>
    <message>
        <source>Nothing to show</source>
        <translation>表示するものがありません</translation>
    </message>
</context>
<context>
    <name>vantoro::PreviewWindow</name>
    <message>
        <source>Extract</source>
        <translation>展開</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>プレビュー</translation>
    </message>
    <message>
        <source>Close Preview</source>
        <translation>プレビューを閉じる</translation>
    </message>
    <message>
        <source>Extract This File</source>
        <translation>このファイルを展開</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>画像</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>テキスト</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>ページ</translation>
    </message>
    <message>
        <source>This document is protected by a password of its own.</source>
        <translation>この文書には別のパスワードが設定されています。</translation>
    </message>
    <message>
        <source>This document is damaged.</source>
        <translation>この文書は破損しています。</translation>
    </message>
    <message numerus="yes">
        <source>%Ln pages</source>
        <translation>
            <numerusform>%Ln ページ</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>vantoro::ProgressOverlay</name>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>Working</source>
        <translation>処理中</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>進行状況</translation>
    </message>
    <message>
        <source>Stopping…</source>
        <translation>中止しています…</translation>
    </message>
</context>
<context>
    <name>vantoro::ProgressPanel</name>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>%1 — %2/s</source>
        <translation>%1 — %2/秒</translation>
    </message>
    <message>
        <source>Stopping…</source>
        <translation>中止しています…</translation>
    </message>
</context>
<context>
    <name>vantoro::ReportWindow</name>
    <message>
        <source>Report</source>
        <translation>レポート</translation>
    </message>
    <message>
        <source>Files that were refused or damaged</source>
        <translation>拒否または破損したファイル</translation>
    </message>
    <message>
        <source>&amp;Copy Report</source>
        <translation>レポートをコピー(&amp;C)</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>閉じる</translation>
    </message>
</context>
<context>
    <name>vantoro::SettingsCard</name>
    <message>
        <source>Until Vantoro is started again.</source>
        <translation>次に Vantoro を起動するまで有効です。</translation>
    </message>
</context>
<context>
    <name>vantoro::SettingsWindow</name>
    <message>
        <source>Settings</source>
        <translation>設定</translation>
    </message>
    <message>
        <source>Opening archives</source>
        <translation>アーカイブを開くとき</translation>
    </message>
    <message>
        <source>&amp;Look inside before extracting</source>
        <translation>展開する前に中身を見る(&amp;L)</translation>
    </message>
    <message>
        <source>An archive that you open is shown first, and extracted when you say so.</source>
        <translation>開いたアーカイブはまず表示され、指示したときに展開されます。</translation>
    </message>
    <message>
        <source>Main window with a &amp;side panel</source>
        <translation>サイドパネル付きのメインウインドウ(&amp;S)</translation>
    </message>
    <message>
        <source>One window with the pages listed at its side, instead of the one with tabs. It extracts what you open without showing it first.</source>
        <translation>タブの代わりに、横にページが並ぶウインドウです。開いたアーカイブは、先に表示せずに展開します。</translation>
    </message>
    <message>
        <source>Only where it is needed</source>
        <translation>必要な場合のみ</translation>
    </message>
    <message>
        <source>Always</source>
        <translation>常に</translation>
    </message>
    <message>
        <source>Never</source>
        <translation>しない</translation>
    </message>
    <message>
        <source>Extracting</source>
        <translation>展開</translation>
    </message>
    <message>
        <source>Make a &amp;folder for what comes out</source>
        <translation>展開結果用のフォルダーを作る(&amp;F)</translation>
    </message>
    <message>
        <source>It is not needed when the archive holds a single item. Never: everything lies loose in the destination.</source>
        <translation>アーカイブの中身が 1 つだけなら不要です。「しない」を選ぶと、すべてが展開先に直接置かれます。</translation>
    </message>
    <message>
        <source>&amp;Open what was extracted</source>
        <translation>展開したものを開く(&amp;O)</translation>
    </message>
    <message>
        <source>The folder or file opens when it is ready.</source>
        <translation>準備ができると、フォルダーまたはファイルが開きます。</translation>
    </message>
    <message>
        <source>Move the archive to the &amp;Trash</source>
        <translation>アーカイブをゴミ箱に移動(&amp;T)</translation>
    </message>
    <message>
        <source>With all its parts, once everything has come out whole.</source>
        <translation>すべてが無事に展開されたら、分割されたファイルも含めて移動します。</translation>
    </message>
    <message>
        <source>Give the new folder the archive&apos;s &amp;date</source>
        <translation>新しいフォルダーをアーカイブの日付にする(&amp;D)</translation>
    </message>
    <message>
        <source>Otherwise the folder bears the time of its extraction. Files always keep their own dates.</source>
        <translation>選ばない場合、フォルダーは展開した日時になります。ファイルの日付は常に保持されます。</translation>
    </message>
    <message>
        <source>Ask every time</source>
        <translation>毎回尋ねる</translation>
    </message>
    <message>
        <source>Beside the archive</source>
        <translation>アーカイブと同じ場所</translation>
    </message>
    <message>
        <source>Places</source>
        <translation>場所</translation>
    </message>
    <message>
        <source>&amp;Where archives are extracted to</source>
        <translation>アーカイブの展開先(&amp;W)</translation>
    </message>
    <message>
        <source>Holds for archives that you open or drop, and for the file manager&apos;s menu.</source>
        <translation>開いたりドロップしたりしたアーカイブと、ファイルマネージャーのメニューに適用されます。</translation>
    </message>
    <message>
        <source>&amp;Desktop folder</source>
        <translation>デスクトップフォルダー(&amp;D)</translation>
    </message>
    <message>
        <source>Where &quot;Extract to the Desktop&quot; puts things.</source>
        <translation>「デスクトップに展開」の展開先です。</translation>
    </message>
    <message>
        <source> %</source>
        <translation>%</translation>
    </message>
    <message>
        <source>File names in old archives</source>
        <translation>古いアーカイブのファイル名</translation>
    </message>
    <message>
        <source>&amp;Encoding of file names</source>
        <translation>ファイル名の文字コード(&amp;E)</translation>
    </message>
    <message>
        <source>How names are read in archives that do not say it themselves. Without a choice, it is found out.</source>
        <translation>文字コードの情報がないアーカイブの名前の読み方です。指定しなければ自動判別されます。</translation>
    </message>
    <message>
        <source>Ask when &amp;less sure than</source>
        <translation>確度がこれより低いときは尋ねる(&amp;L)</translation>
    </message>
    <message>
        <source>A guess at the encoding that is surer than this is used without a question.</source>
        <translation>これより確かな推定結果は、確認せずに使用されます。</translation>
    </message>
    <message>
        <source>Choose the Desktop folder</source>
        <translation>デスクトップフォルダーを選択</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>選択</translation>
    </message>
</context>
<context>
    <name>vantoro::ShortcutsWindow</name>
    <message>
        <source>Keyboard Shortcuts</source>
        <translation>キーボードショートカット</translation>
    </message>
    <message>
        <source>In every window</source>
        <translation>すべてのウインドウ</translation>
    </message>
    <message>
        <source>On the pages</source>
        <translation>各ページ</translation>
    </message>
</context>
<context>
    <name>vantoro::SideTable</name>
    <message>
        <source>Pages</source>
        <translation>ページ</translation>
    </message>
</context>
<context>
    <name>vantoro::SpinningIndicator</name>
    <message>
        <source>Busy</source>
        <translation>処理中</translation>
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
        <translation>パスワードの強度</translation>
    </message>
</context>
<context>
    <name>vantoro::TaskWindow</name>
    <message>
        <source>Extractions</source>
        <translation>展開</translation>
    </message>
    <message>
        <source>File &amp;names:</source>
        <translation>ファイル名(&amp;N):</translation>
    </message>
    <message>
        <source>Encoding of file names</source>
        <translation>ファイル名の文字コード</translation>
    </message>
    <message numerus="yes">
        <source>%n archive(s)</source>
        <translation>
            <numerusform>%n 個のアーカイブ</numerusform>
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
        <translation>メニュー</translation>
    </message>
</context>
<context>
    <name>vantoro::WaitPanel</name>
    <message>
        <source>Waiting</source>
        <translation>待機中</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>キャンセル</translation>
    </message>
    <message>
        <source>Cancel %1</source>
        <translation>%1 をキャンセル</translation>
    </message>
</context>
</TS>
