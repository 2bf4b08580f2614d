<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ja">
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
        <source>an unknown error occurred</source>
        <translation>不明なエラーが発生しました</translation>
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
</context>
<context>
    <name>vantoro::KXTaskListsView</name>
    <message>
        <source>Extractions</source>
        <translation>展開</translation>
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
    <name>vantoro::SpinningIndicator</name>
    <message>
        <source>Busy</source>
        <translation>処理中</translation>
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
        <translation>展開するアーカイブをここにドロップ</translation>
    </message>
    <message>
        <source>or choose them from your folders</source>
        <translation>またはフォルダーから選択してください</translation>
    </message>
    <message>
        <source>Select Archives…</source>
        <translation>アーカイブを選択…</translation>
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
