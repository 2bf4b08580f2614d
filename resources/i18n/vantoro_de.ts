<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>AppCommands</name>
    <message>
        <source>&amp;Open Archive…</source>
        <translation>Archiv ö&amp;ffnen …</translation>
    </message>
    <message>
        <source>&amp;New Archive…</source>
        <translation>&amp;Neues Archiv …</translation>
    </message>
    <message>
        <source>&amp;Extract…</source>
        <translation>&amp;Entpacken …</translation>
    </message>
    <message>
        <source>Extract to the &amp;Desktop…</source>
        <translation>Auf den &amp;Schreibtisch entpacken …</translation>
    </message>
    <message>
        <source>Extract &amp;Beside the Archives…</source>
        <translation>Neben den Archiven ent&amp;packen …</translation>
    </message>
    <message>
        <source>&amp;Look Inside Before Extracting</source>
        <translation>Vor dem Entpacken &amp;ansehen</translation>
    </message>
    <message>
        <source>Window with Side &amp;Panel</source>
        <translation>Fenster mit Seiten&amp;leiste</translation>
    </message>
    <message>
        <source>Show &amp;Main Window</source>
        <translation>&amp;Hauptfenster zeigen</translation>
    </message>
    <message>
        <source>&amp;Settings</source>
        <translation>&amp;Einstellungen</translation>
    </message>
    <message>
        <source>&amp;How to Use</source>
        <translation>&amp;Kurzanleitung</translation>
    </message>
    <message>
        <source>&amp;Keyboard Shortcuts</source>
        <translation>&amp;Tastenkürzel</translation>
    </message>
    <message>
        <source>Get S&amp;upport</source>
        <translation>&amp;Unterstützung</translation>
    </message>
    <message>
        <source>Home Pa&amp;ge</source>
        <translation>&amp;Webseite</translation>
    </message>
    <message>
        <source>&amp;About Vantoro</source>
        <translation>Ü&amp;ber Vantoro</translation>
    </message>
    <message>
        <source>&amp;Close Window</source>
        <translation>Fenster s&amp;chließen</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>Bee&amp;nden</translation>
    </message>
</context>
<context>
    <name>AppSandboxFileAccess</name>
    <message>
        <source>Allow Access</source>
        <translation>Zugriff erlauben</translation>
    </message>
    <message>
        <source>%1 needs to access this path to continue. Click Allow to continue.</source>
        <translation>%1 benötigt Zugriff auf diesen Ort, um fortzufahren. Klicken Sie auf „Erlauben“.</translation>
    </message>
    <message>
        <source>Allow</source>
        <translation>Erlauben</translation>
    </message>
</context>
<context>
    <name>ArchiveTexts</name>
    <message>
        <source>encrypted, names too</source>
        <translation>verschlüsselt, auch die Namen</translation>
    </message>
    <message>
        <source>encrypted</source>
        <translation>verschlüsselt</translation>
    </message>
    <message numerus="yes">
        <source>%Ln entries</source>
        <translation>
            <numerusform>%Ln Eintrag</numerusform>
            <numerusform>%Ln Einträge</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln files</source>
        <translation>
            <numerusform>%Ln Datei</numerusform>
            <numerusform>%Ln Dateien</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln folders</source>
        <translation>
            <numerusform>%Ln Ordner</numerusform>
            <numerusform>%Ln Ordner</numerusform>
        </translation>
    </message>
    <message>
        <source>%1, %2 packed</source>
        <translation>%1, gepackt %2</translation>
    </message>
    <message>
        <source>names in %1</source>
        <translation>Namen in %1</translation>
    </message>
    <message numerus="yes">
        <source>%Ln volumes</source>
        <translation>
            <numerusform>%Ln Teil</numerusform>
            <numerusform>%Ln Teile</numerusform>
        </translation>
    </message>
    <message>
        <source>damaged: %1</source>
        <translation>beschädigt: %1</translation>
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
        <translation>Westeuropäisch (ISO Latin 1)</translation>
    </message>
    <message>
        <source>Western (Windows 1252)</source>
        <translation>Westeuropäisch (Windows 1252)</translation>
    </message>
    <message>
        <source>Western (DOS 437)</source>
        <translation>Westeuropäisch (DOS 437)</translation>
    </message>
    <message>
        <source>Western (DOS 850)</source>
        <translation>Westeuropäisch (DOS 850)</translation>
    </message>
    <message>
        <source>Western (Mac OS Roman)</source>
        <translation>Westeuropäisch (Mac OS Roman)</translation>
    </message>
    <message>
        <source>Western (ISO Latin 9)</source>
        <translation>Westeuropäisch (ISO Latin 9)</translation>
    </message>
    <message>
        <source>Japanese (Shift JIS)</source>
        <translation>Japanisch (Shift JIS)</translation>
    </message>
    <message>
        <source>Japanese (EUC)</source>
        <translation>Japanisch (EUC)</translation>
    </message>
    <message>
        <source>Japanese (ISO 2022-JP)</source>
        <translation>Japanisch (ISO 2022-JP)</translation>
    </message>
    <message>
        <source>Chinese, simplified (GBK)</source>
        <translation>Chinesisch, vereinfacht (GBK)</translation>
    </message>
    <message>
        <source>Chinese, simplified (GB 18030)</source>
        <translation>Chinesisch, vereinfacht (GB 18030)</translation>
    </message>
    <message>
        <source>Chinese, traditional (Big 5)</source>
        <translation>Chinesisch, traditionell (Big 5)</translation>
    </message>
    <message>
        <source>Korean (EUC, Windows 949)</source>
        <translation>Koreanisch (EUC, Windows 949)</translation>
    </message>
    <message>
        <source>Cyrillic (Windows 1251)</source>
        <translation>Kyrillisch (Windows 1251)</translation>
    </message>
    <message>
        <source>Cyrillic (DOS 866)</source>
        <translation>Kyrillisch (DOS 866)</translation>
    </message>
    <message>
        <source>Cyrillic (KOI8-R)</source>
        <translation>Kyrillisch (KOI8-R)</translation>
    </message>
    <message>
        <source>Cyrillic (KOI8-U)</source>
        <translation>Kyrillisch (KOI8-U)</translation>
    </message>
    <message>
        <source>Cyrillic (ISO 8859-5)</source>
        <translation>Kyrillisch (ISO 8859-5)</translation>
    </message>
    <message>
        <source>Cyrillic (Mac OS)</source>
        <translation>Kyrillisch (Mac OS)</translation>
    </message>
    <message>
        <source>Central European (Windows 1250)</source>
        <translation>Mitteleuropäisch (Windows 1250)</translation>
    </message>
    <message>
        <source>Central European (DOS 852)</source>
        <translation>Mitteleuropäisch (DOS 852)</translation>
    </message>
    <message>
        <source>Central European (ISO Latin 2)</source>
        <translation>Mitteleuropäisch (ISO Latin 2)</translation>
    </message>
    <message>
        <source>Central European (Mac OS)</source>
        <translation>Mitteleuropäisch (Mac OS)</translation>
    </message>
    <message>
        <source>Greek (Windows 1253)</source>
        <translation>Griechisch (Windows 1253)</translation>
    </message>
    <message>
        <source>Greek (ISO 8859-7)</source>
        <translation>Griechisch (ISO 8859-7)</translation>
    </message>
    <message>
        <source>Greek (DOS 737)</source>
        <translation>Griechisch (DOS 737)</translation>
    </message>
    <message>
        <source>Turkish (Windows 1254)</source>
        <translation>Türkisch (Windows 1254)</translation>
    </message>
    <message>
        <source>Turkish (ISO Latin 5)</source>
        <translation>Türkisch (ISO Latin 5)</translation>
    </message>
    <message>
        <source>Turkish (DOS 857)</source>
        <translation>Türkisch (DOS 857)</translation>
    </message>
    <message>
        <source>Hebrew (Windows 1255)</source>
        <translation>Hebräisch (Windows 1255)</translation>
    </message>
    <message>
        <source>Hebrew (ISO 8859-8)</source>
        <translation>Hebräisch (ISO 8859-8)</translation>
    </message>
    <message>
        <source>Hebrew (DOS 862)</source>
        <translation>Hebräisch (DOS 862)</translation>
    </message>
    <message>
        <source>Arabic (Windows 1256)</source>
        <translation>Arabisch (Windows 1256)</translation>
    </message>
    <message>
        <source>Arabic (ISO 8859-6)</source>
        <translation>Arabisch (ISO 8859-6)</translation>
    </message>
    <message>
        <source>Arabic (DOS 864)</source>
        <translation>Arabisch (DOS 864)</translation>
    </message>
    <message>
        <source>Baltic (Windows 1257)</source>
        <translation>Baltisch (Windows 1257)</translation>
    </message>
    <message>
        <source>Baltic (ISO Latin 4)</source>
        <translation>Baltisch (ISO Latin 4)</translation>
    </message>
    <message>
        <source>Baltic (ISO Latin 7)</source>
        <translation>Baltisch (ISO Latin 7)</translation>
    </message>
    <message>
        <source>Baltic (DOS 775)</source>
        <translation>Baltisch (DOS 775)</translation>
    </message>
    <message>
        <source>Vietnamese (Windows 1258)</source>
        <translation>Vietnamesisch (Windows 1258)</translation>
    </message>
    <message>
        <source>Thai (Windows 874)</source>
        <translation>Thailändisch (Windows 874)</translation>
    </message>
    <message>
        <source>South European (ISO Latin 3)</source>
        <translation>Südeuropäisch (ISO Latin 3)</translation>
    </message>
    <message>
        <source>Nordic (ISO Latin 6)</source>
        <translation>Nordisch (ISO Latin 6)</translation>
    </message>
    <message>
        <source>Celtic (ISO Latin 8)</source>
        <translation>Keltisch (ISO Latin 8)</translation>
    </message>
    <message>
        <source>Nordic (DOS 865)</source>
        <translation>Nordisch (DOS 865)</translation>
    </message>
    <message>
        <source>Portuguese (DOS 860)</source>
        <translation>Portugiesisch (DOS 860)</translation>
    </message>
    <message>
        <source>Canadian French (DOS 863)</source>
        <translation>Kanadisches Französisch (DOS 863)</translation>
    </message>
    <message>
        <source>Icelandic (DOS 861)</source>
        <translation>Isländisch (DOS 861)</translation>
    </message>
</context>
<context>
    <name>CommandLine</name>
    <message>
        <source>there is no option &quot;%1&quot;</source>
        <translation>die Option „%1“ gibt es nicht</translation>
    </message>
    <message>
        <source>&quot;--extract-to&quot; needs a folder</source>
        <translation>„--extract-to“ verlangt einen Ordner</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a file here</source>
        <translation>„%1“ ist keine lokale Datei</translation>
    </message>
    <message>
        <source>no archive is given</source>
        <translation>es ist kein Archiv angegeben</translation>
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
        <translation>Aufruf: vantoro [OPTION] [DATEI...]

Öffnet Archive: entpackt sie oder zeigt sie an, je nach Einstellung.
Ohne Archiv erscheint das Hauptfenster.

  --extract-here         jedes Archiv neben sich selbst entpacken
  --extract-to ORDNER    in ORDNER entpacken
  --extract-to-desktop   in den Schreibtisch-Ordner der Einstellungen entpacken
  --extract-ask          nach dem Ziel fragen
  --extract              entpacken, wohin die Einstellungen sagen, oder fragen
  --compress             aus den Dateien ein Archiv erstellen
  --dbus-service         auf Aufrufe über den Sitzungsbus warten
  -h, --help             diese Hilfe anzeigen
  --version              die Version anzeigen
  --                     alles danach ist eine Datei

Dateien sind Pfade oder file://-URIs. vantoro-cli arbeitet ohne Bildschirm.
</translation>
    </message>
</context>
<context>
    <name>EntryPreviewer</name>
    <message>
        <source>Reading “%1”…</source>
        <translation>„%1“ wird gelesen …</translation>
    </message>
</context>
<context>
    <name>ExtractionSummary</name>
    <message>
        <source>&quot;%1&quot; was extracted</source>
        <translation>„%1“ wurde entpackt</translation>
    </message>
    <message numerus="yes">
        <source>%n archive(s) were extracted</source>
        <translation>
            <numerusform>%n Archiv wurde entpackt</numerusform>
            <numerusform>%n Archive wurden entpackt</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; could not be extracted</source>
        <translation>„%1“ konnte nicht entpackt werden</translation>
    </message>
    <message>
        <source>%1 of %2 archives could not be extracted</source>
        <translation>%1 von %2 Archiven konnten nicht entpackt werden</translation>
    </message>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>und %n weiteres</numerusform>
            <numerusform>und %n weitere</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; in %2</source>
        <translation>„%1“ in %2</translation>
    </message>
    <message numerus="yes">
        <source>%n entry(s) were damaged or refused</source>
        <translation>
            <numerusform>%n Eintrag war beschädigt oder wurde abgelehnt</numerusform>
            <numerusform>%n Einträge waren beschädigt oder wurden abgelehnt</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>FilePreview</name>
    <message numerus="yes">
        <source>%n item(s)</source>
        <translation>
            <numerusform>%n Objekt</numerusform>
            <numerusform>%n Objekte</numerusform>
        </translation>
    </message>
    <message>
        <source>Cannot be read</source>
        <translation>Nicht lesbar</translation>
    </message>
</context>
<context>
    <name>Formats</name>
    <message>
        <source>RPM package</source>
        <translation>RPM-Paket</translation>
    </message>
    <message>
        <source>tar archive</source>
        <translation>Tar-Archiv</translation>
    </message>
    <message>
        <source>RAR archive</source>
        <translation>RAR-Archiv</translation>
    </message>
    <message>
        <source>ARJ archive</source>
        <translation>ARJ-Archiv</translation>
    </message>
    <message>
        <source>cpio archive</source>
        <translation>Cpio-Archiv</translation>
    </message>
    <message>
        <source>ISO 9660 disc image</source>
        <translation>ISO-9660-Abbild</translation>
    </message>
    <message>
        <source>gzip file</source>
        <translation>Gzip-Datei</translation>
    </message>
    <message>
        <source>bzip2 file</source>
        <translation>Bzip2-Datei</translation>
    </message>
    <message>
        <source>xz file</source>
        <translation>XZ-Datei</translation>
    </message>
    <message>
        <source>Zstandard file</source>
        <translation>Zstandard-Datei</translation>
    </message>
    <message>
        <source>LZ4 file</source>
        <translation>LZ4-Datei</translation>
    </message>
    <message>
        <source>lzip file</source>
        <translation>Lzip-Datei</translation>
    </message>
    <message>
        <source>lzop file</source>
        <translation>Lzop-Datei</translation>
    </message>
    <message>
        <source>Unix compress file</source>
        <translation>Unix-compress-Datei</translation>
    </message>
    <message>
        <source>LZMA file</source>
        <translation>LZMA-Datei</translation>
    </message>
    <message>
        <source>zlib stream</source>
        <translation>zlib-Datenstrom</translation>
    </message>
    <message>
        <source>Brotli file</source>
        <translation>Brotli-Datei</translation>
    </message>
    <message>
        <source>Zip archive</source>
        <translation>Zip-Archiv</translation>
    </message>
    <message>
        <source>LHA archive</source>
        <translation>LHA-Archiv</translation>
    </message>
    <message>
        <source>PMarc archive</source>
        <translation>PMarc-Archiv</translation>
    </message>
    <message>
        <source>Unix archive or Debian package</source>
        <translation>Unix-Archiv oder Debian-Paket</translation>
    </message>
    <message>
        <source>xar archive</source>
        <translation>Xar-Archiv</translation>
    </message>
    <message>
        <source>Web archive</source>
        <translation>Webarchiv</translation>
    </message>
    <message>
        <source>NSIS installer</source>
        <translation>NSIS-Installationsprogramm</translation>
    </message>
    <message>
        <source>7z archive</source>
        <translation>7z-Archiv</translation>
    </message>
    <message>
        <source>Cabinet</source>
        <translation>Cabinet-Archiv</translation>
    </message>
    <message>
        <source>Windows installer package</source>
        <translation>Windows-Installationspaket</translation>
    </message>
    <message>
        <source>Compound file</source>
        <translation>Verbunddatei</translation>
    </message>
    <message>
        <source>Compiled help</source>
        <translation>Kompilierte Hilfe</translation>
    </message>
    <message>
        <source>Compiled help 2</source>
        <translation>Kompilierte Hilfe 2</translation>
    </message>
    <message>
        <source>Windows image</source>
        <translation>Windows-Abbild</translation>
    </message>
    <message>
        <source>UDF disc image</source>
        <translation>UDF-Abbild</translation>
    </message>
    <message>
        <source>SquashFS image</source>
        <translation>SquashFS-Abbild</translation>
    </message>
    <message>
        <source>CramFS image</source>
        <translation>CramFS-Abbild</translation>
    </message>
    <message>
        <source>macOS disk image</source>
        <translation>macOS-Datenträgerabbild</translation>
    </message>
    <message>
        <source>Virtual disk</source>
        <translation>Virtueller Datenträger</translation>
    </message>
    <message>
        <source>NTFS image</source>
        <translation>NTFS-Abbild</translation>
    </message>
    <message>
        <source>APFS image</source>
        <translation>APFS-Abbild</translation>
    </message>
    <message>
        <source>HFS+ image</source>
        <translation>HFS+-Abbild</translation>
    </message>
    <message>
        <source>FAT image</source>
        <translation>FAT-Abbild</translation>
    </message>
    <message>
        <source>ext file system image</source>
        <translation>ext-Dateisystemabbild</translation>
    </message>
    <message>
        <source>Disk image</source>
        <translation>Datenträgerabbild</translation>
    </message>
</context>
<context>
    <name>InformationWindow</name>
    <message>
        <source>Windows and the desktop</source>
        <translation>Fenster und Desktop</translation>
    </message>
    <message>
        <source>Reads many formats, writes 7z</source>
        <translation>Liest viele Formate, schreibt 7z</translation>
    </message>
    <message>
        <source>Reads and writes further formats</source>
        <translation>Liest und schreibt weitere Formate</translation>
    </message>
    <message>
        <source>LHA methods</source>
        <translation>LHA-Verfahren</translation>
    </message>
    <message>
        <source>Deflate, whole blocks</source>
        <translation>Deflate, ganze Blöcke</translation>
    </message>
    <message>
        <source>Deflate, streams</source>
        <translation>Deflate, Datenströme</translation>
    </message>
    <message>
        <source>Deflate, writing</source>
        <translation>Deflate, Schreiben</translation>
    </message>
    <message>
        <source>xz and lzma</source>
        <translation>xz und lzma</translation>
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
        <translation>WAV-Dateien in Zip</translation>
    </message>
    <message>
        <source>Ciphers and checksums</source>
        <translation>Verschlüsselung und Prüfsummen</translation>
    </message>
    <message>
        <source>Text encodings</source>
        <translation>Textkodierungen</translation>
    </message>
    <message>
        <source>Finding an encoding out</source>
        <translation>Erkennen einer Kodierung</translation>
    </message>
    <message>
        <source>Confines the decoders</source>
        <translation>Schottet die Dekodierer ab</translation>
    </message>
    <message>
        <source>Strength of passwords</source>
        <translation>Stärke von Passwörtern</translation>
    </message>
</context>
<context>
    <name>KXUnarchiveWrapper</name>
    <message>
        <source>“%1” is too large to be shown: it has %2, and at most %3 are read for a preview.</source>
        <translation>„%1“ ist zu groß für die Vorschau: Die Datei hat %2, höchstens %3 werden dafür gelesen.</translation>
    </message>
    <message>
        <source>more than that</source>
        <translation>mehr als das</translation>
    </message>
    <message>
        <source>“%1” is encrypted, and the password does not fit.</source>
        <translation>„%1“ ist verschlüsselt und das Passwort passt nicht.</translation>
    </message>
    <message>
        <source>“%1” cannot be read: %2.</source>
        <translation>„%1“ kann nicht gelesen werden: %2.</translation>
    </message>
</context>
<context>
    <name>MainPages</name>
    <message>
        <source>Compress</source>
        <translation>Komprimieren</translation>
    </message>
    <message>
        <source>Extract</source>
        <translation>Entpacken</translation>
    </message>
</context>
<context>
    <name>PackKinds</name>
    <message>
        <source>Zip archive</source>
        <translation>Zip-Archiv</translation>
    </message>
    <message>
        <source>7-Zip archive</source>
        <translation>7-Zip-Archiv</translation>
    </message>
    <message>
        <source>Gzip-compressed tar</source>
        <translation>Tar, mit Gzip komprimiert</translation>
    </message>
    <message>
        <source>XZ-compressed tar</source>
        <translation>Tar, mit XZ komprimiert</translation>
    </message>
    <message>
        <source>Zstandard-compressed tar</source>
        <translation>Tar, mit Zstandard komprimiert</translation>
    </message>
    <message>
        <source>Bzip2-compressed tar</source>
        <translation>Tar, mit Bzip2 komprimiert</translation>
    </message>
    <message>
        <source>Tar archive</source>
        <translation>Tar-Archiv</translation>
    </message>
    <message>
        <source>LZ4-compressed tar</source>
        <translation>Tar, mit LZ4 komprimiert</translation>
    </message>
    <message>
        <source>Cpio archive</source>
        <translation>Cpio-Archiv</translation>
    </message>
    <message>
        <source>CD image (ISO 9660)</source>
        <translation>CD-Abbild (ISO 9660)</translation>
    </message>
    <message>
        <source>Xar archive</source>
        <translation>Xar-Archiv</translation>
    </message>
    <message>
        <source>Ar archive</source>
        <translation>Ar-Archiv</translation>
    </message>
    <message>
        <source>Java archive</source>
        <translation>Java-Archiv</translation>
    </message>
    <message>
        <source>Comic book archive</source>
        <translation>Comic-Archiv</translation>
    </message>
    <message>
        <source>Gzip-compressed file</source>
        <translation>Datei, mit Gzip komprimiert</translation>
    </message>
    <message>
        <source>XZ-compressed file</source>
        <translation>Datei, mit XZ komprimiert</translation>
    </message>
    <message>
        <source>Zstandard-compressed file</source>
        <translation>Datei, mit Zstandard komprimiert</translation>
    </message>
    <message>
        <source>Bzip2-compressed file</source>
        <translation>Datei, mit Bzip2 komprimiert</translation>
    </message>
    <message>
        <source>LZ4-compressed file</source>
        <translation>Datei, mit LZ4 komprimiert</translation>
    </message>
</context>
<context>
    <name>PasswordGate</name>
    <message>
        <source>Checking the password…</source>
        <translation>Passwort wird geprüft …</translation>
    </message>
</context>
<context>
    <name>PasswordStrength</name>
    <message>
        <source>Weak</source>
        <translation>Schwach</translation>
    </message>
    <message>
        <source>Fair</source>
        <translation>Mäßig</translation>
    </message>
    <message>
        <source>Good</source>
        <translation>Gut</translation>
    </message>
    <message>
        <source>Strong</source>
        <translation>Stark</translation>
    </message>
</context>
<context>
    <name>PreviewContent</name>
    <message>
        <source>This picture cannot be shown: it is damaged, or too large to decode.</source>
        <translation>Dieses Bild kann nicht angezeigt werden: Es ist beschädigt oder zu groß.</translation>
    </message>
    <message>
        <source>%1 × %2 pixels</source>
        <translation>%1 × %2 Pixel</translation>
    </message>
    <message>
        <source>The beginning of %1</source>
        <translation>Der Anfang von %1</translation>
    </message>
    <message>
        <source>This file is empty.</source>
        <translation>Diese Datei ist leer.</translation>
    </message>
    <message>
        <source>There is no preview for this kind of file.</source>
        <translation>Keine Vorschau für diesen Dateityp.</translation>
    </message>
</context>
<context>
    <name>ProgressPanel</name>
    <message>
        <source>%1 of %2</source>
        <translation>%1 von %2</translation>
    </message>
    <message>
        <source>%1 of %2 files</source>
        <translation>%1 von %2 Dateien</translation>
    </message>
    <message>
        <source>A few seconds left</source>
        <translation>Noch wenige Sekunden</translation>
    </message>
    <message numerus="yes">
        <source>About %n seconds left</source>
        <translation>
            <numerusform>Noch etwa %n Sekunde</numerusform>
            <numerusform>Noch etwa %n Sekunden</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>About %n minute(s) left</source>
        <translation>
            <numerusform>Noch etwa %n Minute</numerusform>
            <numerusform>Noch etwa %n Minuten</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>About %n hour(s) left</source>
        <translation>
            <numerusform>Noch etwa %n Stunde</numerusform>
            <numerusform>Noch etwa %n Stunden</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>QFileDialog</name>
    <message>
        <source>Allowed files (%1)</source>
        <translation>Erlaubte Dateien (%1)</translation>
    </message>
</context>
<context>
    <name>XADException</name>
    <message>
        <source>an internal error occurred</source>
        <translation>ein interner Fehler ist aufgetreten</translation>
    </message>
    <message>
        <source>stopped by the user</source>
        <translation>vom Benutzer gestoppt</translation>
    </message>
    <message>
        <source>reading the archive failed</source>
        <translation>das Archiv konnte nicht gelesen werden</translation>
    </message>
    <message>
        <source>this is not an archive of a known format</source>
        <translation>dies ist kein Archiv eines bekannten Formats</translation>
    </message>
    <message>
        <source>the archive ends too early</source>
        <translation>das Archiv endet zu früh</translation>
    </message>
    <message>
        <source>the archive is damaged</source>
        <translation>das Archiv ist beschädigt</translation>
    </message>
    <message>
        <source>the data are damaged (wrong checksum)</source>
        <translation>die Daten sind beschädigt (falsche Prüfsumme)</translation>
    </message>
    <message>
        <source>the data are damaged (wrong size)</source>
        <translation>die Daten sind beschädigt (falsche Größe)</translation>
    </message>
    <message>
        <source>the compression method is not supported</source>
        <translation>das Kompressionsverfahren wird nicht unterstützt</translation>
    </message>
    <message>
        <source>the kind of encryption is not supported</source>
        <translation>die Art der Verschlüsselung wird nicht unterstützt</translation>
    </message>
    <message>
        <source>the archive uses a feature that is not supported</source>
        <translation>das Archiv verwendet eine nicht unterstützte Funktion</translation>
    </message>
    <message>
        <source>a password is needed</source>
        <translation>ein Passwort ist erforderlich</translation>
    </message>
    <message>
        <source>the password is wrong, or the data are damaged</source>
        <translation>das Passwort ist falsch oder die Daten sind beschädigt</translation>
    </message>
    <message>
        <source>a part of the archive is missing</source>
        <translation>ein Teil des Archivs fehlt</translation>
    </message>
    <message>
        <source>the archive asks for more than is allowed</source>
        <translation>das Archiv verlangt mehr, als erlaubt ist</translation>
    </message>
    <message>
        <source>there is not enough memory</source>
        <translation>der Speicher reicht nicht aus</translation>
    </message>
    <message>
        <source>the reader for this format stopped unexpectedly</source>
        <translation>das Leseprogramm für dieses Format wurde unerwartet beendet</translation>
    </message>
    <message>
        <source>the reader for this format does not get on</source>
        <translation>das Leseprogramm für dieses Format kommt nicht voran</translation>
    </message>
    <message>
        <source>entries of the archive overlap, as in a forged archive</source>
        <translation>Einträge des Archivs überlappen sich wie in einem gefälschten Archiv</translation>
    </message>
    <message>
        <source>the name is not safe</source>
        <translation>der Name ist nicht sicher</translation>
    </message>
    <message>
        <source>the link leads out of the destination folder</source>
        <translation>die Verknüpfung führt aus dem Zielordner hinaus</translation>
    </message>
    <message>
        <source>devices, pipes and sockets are not created</source>
        <translation>Geräte, Pipes und Sockets werden nicht angelegt</translation>
    </message>
    <message>
        <source>the entry was refused</source>
        <translation>der Eintrag wurde abgelehnt</translation>
    </message>
    <message>
        <source>the name is already taken</source>
        <translation>der Name ist bereits vergeben</translation>
    </message>
    <message>
        <source>the disk is full</source>
        <translation>der Datenträger ist voll</translation>
    </message>
    <message>
        <source>writing failed</source>
        <translation>das Schreiben ist fehlgeschlagen</translation>
    </message>
    <message>
        <source>the destination folder cannot be written to</source>
        <translation>in den Zielordner kann nicht geschrieben werden</translation>
    </message>
    <message>
        <source>the destination folder has vanished</source>
        <translation>der Zielordner ist verschwunden</translation>
    </message>
    <message>
        <source>the archive would grow out of proportion</source>
        <translation>das Archiv würde unverhältnismäßig groß</translation>
    </message>
    <message>
        <source>the encoding of the file names is not known</source>
        <translation>die Kodierung der Dateinamen ist unbekannt</translation>
    </message>
    <message>
        <source>the file cannot be read</source>
        <translation>die Datei kann nicht gelesen werden</translation>
    </message>
    <message>
        <source>archives of this kind cannot be created</source>
        <translation>Archive dieser Art können nicht erstellt werden</translation>
    </message>
    <message>
        <source>something unknown follows the end of the compressed data</source>
        <translation>auf das Ende der komprimierten Daten folgt etwas Unbekanntes</translation>
    </message>
    <message>
        <source>the program was updated while it runs; please start it again</source>
        <translation>das Programm wurde aktualisiert, während es läuft; bitte starten Sie es neu</translation>
    </message>
    <message>
        <source>an unknown error occurred</source>
        <translation>ein unbekannter Fehler ist aufgetreten</translation>
    </message>
</context>
<context>
    <name>vantoro::AppCommands</name>
    <message>
        <source>Extract page</source>
        <translation>Seite „Entpacken“</translation>
    </message>
    <message>
        <source>Compress page</source>
        <translation>Seite „Komprimieren“</translation>
    </message>
    <message>
        <source>Next page</source>
        <translation>Nächste Seite</translation>
    </message>
    <message>
        <source>Preview the chosen entry</source>
        <translation>Ausgewählten Eintrag ansehen</translation>
    </message>
    <message>
        <source>Filter entries</source>
        <translation>Einträge filtern</translation>
    </message>
    <message>
        <source>Choose everything</source>
        <translation>Alles auswählen</translation>
    </message>
    <message>
        <source>Open or close a folder of the archive</source>
        <translation>Ordner im Archiv auf- oder zuklappen</translation>
    </message>
    <message>
        <source>Stop what runs, close a question or a preview</source>
        <translation>Laufendes stoppen, Frage oder Vorschau schließen</translation>
    </message>
</context>
<context>
    <name>vantoro::AppDelegate</name>
    <message>
        <source>Select archives to extract</source>
        <translation>Zu entpackende Archive auswählen</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>Auswählen</translation>
    </message>
    <message>
        <source>Please select the extracted destination</source>
        <translation>Bitte wählen Sie das Ziel zum Entpacken</translation>
    </message>
    <message>
        <source>Extract</source>
        <translation>Entpacken</translation>
    </message>
</context>
<context>
    <name>vantoro::ArchiveTreeModel</name>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Größe</translation>
    </message>
    <message>
        <source>Modified</source>
        <translation>Geändert</translation>
    </message>
</context>
<context>
    <name>vantoro::ChosenExtraction</name>
    <message>
        <source>Please select the destination</source>
        <translation>Bitte wählen Sie das Ziel</translation>
    </message>
    <message>
        <source>Extract</source>
        <translation>Entpacken</translation>
    </message>
    <message>
        <source>Extracting…</source>
        <translation>Wird entpackt …</translation>
    </message>
</context>
<context>
    <name>vantoro::CompressWindow</name>
    <message>
        <source>Start</source>
        <translation>Starten</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Compression Options</source>
        <translation>Komprimierungsoptionen</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keines</translation>
    </message>
    <message>
        <source>Type it once more</source>
        <translation>Noch einmal eingeben</translation>
    </message>
    <message>
        <source>Repeat the password</source>
        <translation>Passwort wiederholen</translation>
    </message>
    <message>
        <source>Format:</source>
        <translation>Format:</translation>
    </message>
    <message>
        <source>Password:</source>
        <translation>Passwort:</translation>
    </message>
    <message>
        <source>Repeat:</source>
        <translation>Wiederholen:</translation>
    </message>
    <message>
        <source>The two passwords differ.</source>
        <translation>Die beiden Passwörter stimmen nicht überein.</translation>
    </message>
</context>
<context>
    <name>vantoro::ContentsPresenter</name>
    <message>
        <source>Opening “%1”…</source>
        <translation>„%1“ wird geöffnet …</translation>
    </message>
    <message numerus="yes">
        <source>%Ln entries extracted</source>
        <translation>
            <numerusform>%Ln Eintrag entpackt</numerusform>
            <numerusform>%Ln Einträge entpackt</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1, and %Ln more failed</source>
        <translation>
            <numerusform>%1, und %Ln weiterer Fehler</numerusform>
            <numerusform>%1, und %Ln weitere Fehler</numerusform>
        </translation>
    </message>
    <message>
        <source>The list is incomplete: %1</source>
        <translation>Die Liste ist unvollständig: %1</translation>
    </message>
</context>
<context>
    <name>vantoro::EncodingPanel</name>
    <message>
        <source>Stop</source>
        <translation>Stoppen</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Fortfahren</translation>
    </message>
    <message>
        <source>The file names in &quot;%1&quot; do not say how they are written. Choose the encoding in which this name reads right:</source>
        <translation>Die Dateinamen in „%1“ geben ihre Kodierung nicht an. Wählen Sie die Kodierung, in der dieser Name richtig lesbar ist:</translation>
    </message>
    <message>
        <source>This name would read: %1</source>
        <translation>Dieser Name lautet dann: %1</translation>
    </message>
</context>
<context>
    <name>vantoro::ExtractionReporter</name>
    <message>
        <source>Show in Folder</source>
        <translation>Im Ordner zeigen</translation>
    </message>
    <message>
        <source>Show Report</source>
        <translation>Bericht anzeigen</translation>
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
        <translation>Kurzanleitung</translation>
    </message>
    <message>
        <source>Extract</source>
        <translation>Entpacken</translation>
    </message>
    <message>
        <source>Drop archives on the window, or open them in the file manager. They come out one after another; whatever must be asked is asked in the archive&apos;s own row.</source>
        <translation>Ziehen Sie Archive auf das Fenster oder öffnen Sie sie in der Dateiverwaltung. Sie werden nacheinander entpackt; Fragen stehen in der Zeile des jeweiligen Archivs.</translation>
    </message>
    <message>
        <source>Look inside</source>
        <translation>Hineinsehen</translation>
    </message>
    <message>
        <source>With &quot;Look inside before extracting&quot; in the settings, an opened archive shows what it holds. Press Space to preview an entry, and extract all of it or only what you choose.</source>
        <translation>Mit „Vor dem Entpacken ansehen“ in den Einstellungen zeigt ein geöffnetes Archiv seinen Inhalt. Mit der Leertaste sehen Sie einen Eintrag an; entpacken Sie alles oder nur das Ausgewählte.</translation>
    </message>
    <message>
        <source>Compress</source>
        <translation>Komprimieren</translation>
    </message>
    <message>
        <source>Drop files and folders on the Compress page, choose a kind and, if you like, a password, and say where the archive is to be written.</source>
        <translation>Ziehen Sie Dateien und Ordner auf die Seite „Komprimieren“, wählen Sie eine Art und auf Wunsch ein Passwort und geben Sie an, wohin das Archiv geschrieben werden soll.</translation>
    </message>
    <message>
        <source>From the file manager</source>
        <translation>Aus der Dateiverwaltung</translation>
    </message>
    <message>
        <source>The menu of an archive offers to extract it there, to the Desktop, or to a folder of your choice.</source>
        <translation>Das Menü eines Archivs bietet an, es an Ort und Stelle, auf den Schreibtisch oder in einen Ordner Ihrer Wahl zu entpacken.</translation>
    </message>
    <message>
        <source>Always at hand</source>
        <translation>Immer zur Hand</translation>
    </message>
    <message>
        <source>Vantoro goes on running when its windows are closed. Its icon in the tray brings them back, and Quit ends it.</source>
        <translation>Vantoro läuft weiter, wenn seine Fenster geschlossen werden. Das Symbol im Infobereich holt sie zurück, „Beenden“ beendet das Programm.</translation>
    </message>
</context>
<context>
    <name>vantoro::InformationWindow</name>
    <message>
        <source>About Vantoro</source>
        <translation>Über Vantoro</translation>
    </message>
    <message>
        <source>&amp;Formats</source>
        <translation>&amp;Formate</translation>
    </message>
    <message>
        <source>&amp;Libraries</source>
        <translation>&amp;Bibliotheken</translation>
    </message>
    <message>
        <source>Vantoro</source>
        <translation>Vantoro</translation>
    </message>
    <message>
        <source>Version %1, with Qt %2</source>
        <translation>Version %1, mit Qt %2</translation>
    </message>
    <message>
        <source>Free software under the GNU General Public License, version 3 or later.</source>
        <translation>Freie Software unter der GNU General Public License, Version 3 oder später.</translation>
    </message>
    <message>
        <source>Find a format or an extension</source>
        <translation>Format oder Endung suchen</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>Extensions</source>
        <translation>Endungen</translation>
    </message>
    <message>
        <source>Formats that can be read</source>
        <translation>Lesbare Formate</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>Bibliothek</translation>
    </message>
    <message>
        <source>Use</source>
        <translation>Verwendung</translation>
    </message>
    <message>
        <source>Licence</source>
        <translation>Lizenz</translation>
    </message>
    <message>
        <source>Libraries in use</source>
        <translation>Verwendete Bibliotheken</translation>
    </message>
</context>
<context>
    <name>vantoro::KXArchiveContentsViewController</name>
    <message>
        <source>Extract</source>
        <translation>Entpacken</translation>
    </message>
    <message>
        <source>Please select the archive</source>
        <translation>Bitte wählen Sie das Archiv</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>Auswählen</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Vorschau</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Filter by name</source>
        <translation>Nach Namen filtern</translation>
    </message>
    <message>
        <source>Open…</source>
        <translation>Öffnen …</translation>
    </message>
    <message>
        <source>Choose another archive</source>
        <translation>Anderes Archiv auswählen</translation>
    </message>
    <message>
        <source>Extract what is selected, or everything (Ctrl+E)</source>
        <translation>Auswahl oder alles entpacken (Strg+E)</translation>
    </message>
    <message>
        <source>Look at the selected file (Space)</source>
        <translation>Ausgewählte Datei ansehen (Leertaste)</translation>
    </message>
    <message>
        <source>Close the archive</source>
        <translation>Archiv schließen</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Close Folder</source>
        <translation>Ordner zuklappen</translation>
    </message>
    <message>
        <source>Open Folder</source>
        <translation>Ordner aufklappen</translation>
    </message>
    <message>
        <source>Extract All</source>
        <translation>Alles entpacken</translation>
    </message>
    <message>
        <source>Contents of %1</source>
        <translation>Inhalt von %1</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>Information</translation>
    </message>
    <message>
        <source>DO NOT support quicklook this archive, please close &apos;Preview an archive&apos;s file list without extraction&apos; in Preferences Panel to extract directly</source>
        <translation>Dieses Archiv kann nicht angezeigt werden. Schalten Sie in den Einstellungen „Vor dem Entpacken ansehen“ aus, um es direkt zu entpacken.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Wrong Password!</source>
        <translation>Falsches Passwort!</translation>
    </message>
    <message>
        <source>This archive is empty</source>
        <translation>Dieses Archiv ist leer</translation>
    </message>
    <message>
        <source>Extract…</source>
        <translation>Entpacken …</translation>
    </message>
    <message>
        <source>Extract All…</source>
        <translation>Alles entpacken …</translation>
    </message>
    <message>
        <source>Extract to &quot;%1&quot;</source>
        <translation>Nach „%1“ entpacken</translation>
    </message>
    <message>
        <source>Extract All to &quot;%1&quot;</source>
        <translation>Alles nach „%1“ entpacken</translation>
    </message>
</context>
<context>
    <name>vantoro::KXArchiveManageController</name>
    <message>
        <source>DO NOT support unarchive this archive due to the format error.</source>
        <translation>Dieses Archiv kann wegen eines Formatfehlers nicht entpackt werden.</translation>
    </message>
    <message>
        <source>ERROR happened while reading the contents of the file &quot;%1&quot;: %2</source>
        <translation>Beim Lesen des Inhalts der Datei „%1“ ist ein Fehler aufgetreten: %2</translation>
    </message>
    <message>
        <source>ERROR happened while extracting the contents of the file &quot;%1&quot;: %2</source>
        <translation>Beim Entpacken des Inhalts der Datei „%1“ ist ein Fehler aufgetreten: %2</translation>
    </message>
    <message>
        <source>the result could not be moved into the folder &quot;%1&quot;</source>
        <translation>das Ergebnis konnte nicht in den Ordner „%1“ verschoben werden</translation>
    </message>
    <message>
        <source>The archive could not be moved to the Trash.</source>
        <translation>Das Archiv konnte nicht in den Papierkorb verschoben werden.</translation>
    </message>
    <message>
        <source>DO NOT extract the files &quot;%1&quot; from the archive &quot;%2&quot;:
%3</source>
        <translation>Die Dateien „%1“ konnten nicht aus dem Archiv „%2“ entpackt werden:
%3</translation>
    </message>
    <message>
        <source>DO NOT extract the files &quot;%1&quot; from archive &quot;%2&quot;: %3</source>
        <translation>Die Dateien „%1“ konnten nicht aus dem Archiv „%2“ entpackt werden: %3</translation>
    </message>
    <message>
        <source>The archive &quot;%1&quot; of %2 would unpack to %3. Archives that are made to fill a disk look like this.</source>
        <translation>Das Archiv „%1“ mit %2 würde entpackt %3 belegen. So sehen Archive aus, die einen Datenträger füllen sollen.</translation>
    </message>
    <message>
        <source>The contents of the archive &quot;%1&quot; need %2, but only %3 are free in the destination.</source>
        <translation>Der Inhalt des Archivs „%1“ benötigt %2, am Ziel sind aber nur %3 frei.</translation>
    </message>
    <message>
        <source>The archive &quot;%1&quot; of %2 holds %3 entries.</source>
        <translation>Das Archiv „%1“ mit %2 enthält %3 Einträge.</translation>
    </message>
    <message>
        <source>The archive &quot;%1&quot; could not be read to its end: %2</source>
        <translation>Das Archiv „%1“ konnte nicht bis zum Ende gelesen werden: %2</translation>
    </message>
</context>
<context>
    <name>vantoro::KXArchiveTaskView</name>
    <message>
        <source>%1 (+%2 more)</source>
        <translation>%1 (+%2 weitere)</translation>
    </message>
    <message>
        <source>Preparing to extract &quot;%1&quot;</source>
        <translation>„%1“ wird vorbereitet</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stoppen</translation>
    </message>
    <message>
        <source>Extract to Desktop</source>
        <translation>Auf den Schreibtisch entpacken</translation>
    </message>
    <message>
        <source>Choose Folder…</source>
        <translation>Ordner auswählen …</translation>
    </message>
    <message>
        <source>You may not write to the folder &quot;%1&quot;. Where should &quot;%2&quot; be extracted to?</source>
        <translation>Sie dürfen nicht in den Ordner „%1“ schreiben. Wohin soll „%2“ entpackt werden?</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Fortfahren</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Extracting &quot;%1&quot;</source>
        <translation>„%1“ wird entpackt</translation>
    </message>
</context>
<context>
    <name>vantoro::KXDropArchiveView</name>
    <message>
        <source>Drop an archive here</source>
        <translation>Ziehen Sie ein Archiv hierher</translation>
    </message>
    <message>
        <source>to look inside, preview and extract what you need</source>
        <translation>um hineinzusehen und zu entpacken, was Sie brauchen</translation>
    </message>
    <message>
        <source>Choose an Archive…</source>
        <translation>Archiv auswählen …</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>Information</translation>
    </message>
    <message>
        <source>ONLY preview one archive at a time</source>
        <translation>Es kann immer nur ein Archiv angezeigt werden</translation>
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
        <translation>Ziehen Sie Dateien und Ordner zum Komprimieren hierher</translation>
    </message>
    <message>
        <source>or choose them from your folders</source>
        <translation>oder wählen Sie sie aus Ihren Ordnern</translation>
    </message>
    <message>
        <source>Add Files…</source>
        <translation>Dateien hinzufügen …</translation>
    </message>
</context>
<context>
    <name>vantoro::KXEncodePopButton</name>
    <message>
        <source>Text encoding</source>
        <translation>Textkodierung</translation>
    </message>
    <message>
        <source>AUTO Dectect</source>
        <translation>Automatisch erkennen</translation>
    </message>
    <message>
        <source>Default encoding</source>
        <translation>Standardkodierung</translation>
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
        <translation>&amp;Menü</translation>
    </message>
    <message>
        <source>How to use</source>
        <translation>Kurzanleitung</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
</context>
<context>
    <name>vantoro::KXPackViewController</name>
    <message>
        <source>Compress</source>
        <translation>Komprimieren</translation>
    </message>
    <message>
        <source>Please select the files</source>
        <translation>Bitte wählen Sie die Dateien</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>Auswählen</translation>
    </message>
    <message numerus="yes">
        <source>%n item(s)</source>
        <translation>
            <numerusform>%n Objekt</numerusform>
            <numerusform>%n Objekte</numerusform>
        </translation>
    </message>
    <message>
        <source>Please select the destination</source>
        <translation>Bitte wählen Sie das Ziel</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>Information</translation>
    </message>
    <message>
        <source>Please drag files and folers here!</source>
        <translation>Ziehen Sie Dateien und Ordner hierher!</translation>
    </message>
    <message>
        <source>Compressing…</source>
        <translation>Wird komprimiert …</translation>
    </message>
    <message>
        <source>Add…</source>
        <translation>Hinzufügen …</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>Options…</source>
        <translation>Optionen …</translation>
    </message>
    <message>
        <source>&amp;Format</source>
        <translation>&amp;Format</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keines</translation>
    </message>
    <message>
        <source>&amp;Password</source>
        <translation>&amp;Passwort</translation>
    </message>
</context>
<context>
    <name>vantoro::KXTableCellView</name>
    <message>
        <source>Preview</source>
        <translation>Vorschau</translation>
    </message>
    <message>
        <source>Remove from the list</source>
        <translation>Aus der Liste entfernen</translation>
    </message>
    <message>
        <source>Preview %1</source>
        <translation>Vorschau von %1</translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation>%1 entfernen</translation>
    </message>
</context>
<context>
    <name>vantoro::KXTaskListsView</name>
    <message>
        <source>Extractions</source>
        <translation>Entpackvorgänge</translation>
    </message>
</context>
<context>
    <name>vantoro::MainWindows</name>
    <message>
        <source>Stop compressing and quit?</source>
        <translation>Komprimieren stoppen und beenden?</translation>
    </message>
    <message>
        <source>An archive is being written. It will not be kept.</source>
        <translation>Ein Archiv wird gerade geschrieben. Es wird nicht behalten.</translation>
    </message>
    <message>
        <source>Stop extracting and quit?</source>
        <translation>Entpacken stoppen und beenden?</translation>
    </message>
    <message>
        <source>An archive is being extracted. What is not finished is removed.</source>
        <translation>Ein Archiv wird gerade entpackt. Was nicht fertig ist, wird entfernt.</translation>
    </message>
    <message>
        <source>Go On</source>
        <translation>Weiter</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
</context>
<context>
    <name>vantoro::PackTable</name>
    <message>
        <source>Files to compress</source>
        <translation>Zu komprimierende Dateien</translation>
    </message>
</context>
<context>
    <name>vantoro::PasswordField</name>
    <message>
        <source>Password</source>
        <translation>Passwort</translation>
    </message>
    <message>
        <source>Caps Lock is on</source>
        <translation>Die Feststelltaste ist aktiv</translation>
    </message>
    <message>
        <source>Hide password</source>
        <translation>Passwort verbergen</translation>
    </message>
    <message>
        <source>Show password</source>
        <translation>Passwort anzeigen</translation>
    </message>
</context>
<context>
    <name>vantoro::PasswordPanel</name>
    <message>
        <source>Password &amp;encoding:</source>
        <translation>Passwort&amp;kodierung:</translation>
    </message>
    <message>
        <source>Password encoding</source>
        <translation>Passwortkodierung</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stoppen</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Fortfahren</translation>
    </message>
    <message>
        <source>Enter a PASSWORD to open the archive &quot;%1&quot;.</source>
        <translation>Geben Sie das Passwort ein, um das Archiv „%1“ zu öffnen.</translation>
    </message>
    <message>
        <source>That password is not right. Please try again.</source>
        <translation>Das Passwort ist nicht richtig. Bitte versuchen Sie es noch einmal.</translation>
    </message>
    <message>
        <source>Caps Lock is on.</source>
        <translation>Die Feststelltaste ist aktiv.</translation>
    </message>
</context>
<context>
    <name>vantoro::PasswordPrompt</name>
    <message>
        <source>Caps Lock is on</source>
        <translation>Die Feststelltaste ist aktiv</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Passwort</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>“%1” is encrypted. Which password opens it?</source>
        <translation>„%1“ ist verschlüsselt. Mit welchem Passwort lässt es sich öffnen?</translation>
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
        <translation>Archive entpacken …</translation>
    </message>
    <message>
        <source>Open Main Window</source>
        <translation>Hauptfenster öffnen</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>How to Use</source>
        <translation>Kurzanleitung</translation>
    </message>
    <message>
        <source>Quit Vantoro</source>
        <translation>Vantoro beenden</translation>
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
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Vorschau</translation>
    </message>
    <message>
        <source>Contents</source>
        <translation>Inhalt</translation>
    </message>
    <message>
        <source>Nothing to show</source>
        <translation>Nichts anzuzeigen</translation>
    </message>
</context>
<context>
    <name>vantoro::PreviewWindow</name>
    <message>
        <source>Extract</source>
        <translation>Entpacken</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Vorschau</translation>
    </message>
    <message>
        <source>Close Preview</source>
        <translation>Vorschau schließen</translation>
    </message>
    <message>
        <source>Extract This File</source>
        <translation>Diese Datei entpacken</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>Bild</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Text</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Seiten</translation>
    </message>
    <message>
        <source>This document is protected by a password of its own.</source>
        <translation>Dieses Dokument ist durch ein eigenes Passwort geschützt.</translation>
    </message>
    <message>
        <source>This document is damaged.</source>
        <translation>Dieses Dokument ist beschädigt.</translation>
    </message>
    <message numerus="yes">
        <source>%Ln pages</source>
        <translation>
            <numerusform>%Ln Seite</numerusform>
            <numerusform>%Ln Seiten</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>vantoro::ProgressOverlay</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Working</source>
        <translation>In Arbeit</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>Stopping…</source>
        <translation>Wird gestoppt …</translation>
    </message>
</context>
<context>
    <name>vantoro::ProgressPanel</name>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>%1 — %2/s</source>
        <translation>%1 – %2/s</translation>
    </message>
    <message>
        <source>Stopping…</source>
        <translation>Wird gestoppt …</translation>
    </message>
</context>
<context>
    <name>vantoro::ReportWindow</name>
    <message>
        <source>Report</source>
        <translation>Bericht</translation>
    </message>
    <message>
        <source>Files that were refused or damaged</source>
        <translation>Abgelehnte oder beschädigte Dateien</translation>
    </message>
    <message>
        <source>&amp;Copy Report</source>
        <translation>Bericht &amp;kopieren</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>vantoro::SettingsCard</name>
    <message>
        <source>Until Vantoro is started again.</source>
        <translation>Gilt bis zum nächsten Start von Vantoro.</translation>
    </message>
</context>
<context>
    <name>vantoro::SettingsWindow</name>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Opening archives</source>
        <translation>Archive öffnen</translation>
    </message>
    <message>
        <source>&amp;Look inside before extracting</source>
        <translation>Vor dem Entpacken &amp;ansehen</translation>
    </message>
    <message>
        <source>An archive that you open is shown first, and extracted when you say so.</source>
        <translation>Ein geöffnetes Archiv wird erst angezeigt und entpackt, wenn Sie es sagen.</translation>
    </message>
    <message>
        <source>Main window with a &amp;side panel</source>
        <translation>Hauptfenster mit &amp;Seitenleiste</translation>
    </message>
    <message>
        <source>One window with the pages listed at its side, instead of the one with tabs. It extracts what you open without showing it first.</source>
        <translation>Ein Fenster, das die Seiten am Rand auflistet, statt des Fensters mit Reitern. Es entpackt, was Sie öffnen, ohne es vorher zu zeigen.</translation>
    </message>
    <message>
        <source>Only where it is needed</source>
        <translation>Nur wo nötig</translation>
    </message>
    <message>
        <source>Always</source>
        <translation>Immer</translation>
    </message>
    <message>
        <source>Never</source>
        <translation>Nie</translation>
    </message>
    <message>
        <source>Extracting</source>
        <translation>Entpacken</translation>
    </message>
    <message>
        <source>Make a &amp;folder for what comes out</source>
        <translation>Einen &amp;Ordner für das Entpackte anlegen</translation>
    </message>
    <message>
        <source>It is not needed when the archive holds a single item. Never: everything lies loose in the destination.</source>
        <translation>Bei nur einem Objekt im Archiv ist er unnötig. „Nie“: Alles liegt lose am Ziel.</translation>
    </message>
    <message>
        <source>&amp;Open what was extracted</source>
        <translation>Entpacktes ö&amp;ffnen</translation>
    </message>
    <message>
        <source>The folder or file opens when it is ready.</source>
        <translation>Der Ordner oder die Datei wird geöffnet, sobald alles fertig ist.</translation>
    </message>
    <message>
        <source>Move the archive to the &amp;Trash</source>
        <translation>Archiv in den &amp;Papierkorb verschieben</translation>
    </message>
    <message>
        <source>With all its parts, once everything has come out whole.</source>
        <translation>Mit allen Teilen, sobald alles unversehrt entpackt ist.</translation>
    </message>
    <message>
        <source>Give the new folder the archive&apos;s &amp;date</source>
        <translation>Dem neuen Ordner das &amp;Datum des Archivs geben</translation>
    </message>
    <message>
        <source>Otherwise the folder bears the time of its extraction. Files always keep their own dates.</source>
        <translation>Sonst trägt der Ordner die Zeit des Entpackens. Dateien behalten immer ihr eigenes Datum.</translation>
    </message>
    <message>
        <source>Ask every time</source>
        <translation>Jedes Mal fragen</translation>
    </message>
    <message>
        <source>Beside the archive</source>
        <translation>Neben dem Archiv</translation>
    </message>
    <message>
        <source>Places</source>
        <translation>Orte</translation>
    </message>
    <message>
        <source>&amp;Where archives are extracted to</source>
        <translation>&amp;Wohin Archive entpackt werden</translation>
    </message>
    <message>
        <source>Holds for archives that you open or drop, and for the file manager&apos;s menu.</source>
        <translation>Gilt für Archive, die Sie öffnen oder ablegen, und für das Menü der Dateiverwaltung.</translation>
    </message>
    <message>
        <source>&amp;Desktop folder</source>
        <translation>Schreibtisch-&amp;Ordner</translation>
    </message>
    <message>
        <source>Where &quot;Extract to the Desktop&quot; puts things.</source>
        <translation>Hierhin entpackt „Auf den Schreibtisch entpacken“.</translation>
    </message>
    <message>
        <source> %</source>
        <translation> %</translation>
    </message>
    <message>
        <source>File names in old archives</source>
        <translation>Dateinamen in alten Archiven</translation>
    </message>
    <message>
        <source>&amp;Encoding of file names</source>
        <translation>&amp;Kodierung der Dateinamen</translation>
    </message>
    <message>
        <source>How names are read in archives that do not say it themselves. Without a choice, it is found out.</source>
        <translation>Wie Namen in Archiven gelesen werden, die es nicht selbst angeben. Ohne Auswahl wird sie erkannt.</translation>
    </message>
    <message>
        <source>Ask when &amp;less sure than</source>
        <translation>Nachfragen bei weniger Sicherheit a&amp;ls</translation>
    </message>
    <message>
        <source>A guess at the encoding that is surer than this is used without a question.</source>
        <translation>Eine sicherere Vermutung der Kodierung wird ohne Rückfrage verwendet.</translation>
    </message>
    <message>
        <source>Choose the Desktop folder</source>
        <translation>Schreibtisch-Ordner auswählen</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>Auswählen</translation>
    </message>
</context>
<context>
    <name>vantoro::ShortcutsWindow</name>
    <message>
        <source>Keyboard Shortcuts</source>
        <translation>Tastenkürzel</translation>
    </message>
    <message>
        <source>In every window</source>
        <translation>In jedem Fenster</translation>
    </message>
    <message>
        <source>On the pages</source>
        <translation>Auf den Seiten</translation>
    </message>
</context>
<context>
    <name>vantoro::SideTable</name>
    <message>
        <source>Pages</source>
        <translation>Seiten</translation>
    </message>
</context>
<context>
    <name>vantoro::SpinningIndicator</name>
    <message>
        <source>Busy</source>
        <translation>Beschäftigt</translation>
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
        <translation>Passwortstärke</translation>
    </message>
</context>
<context>
    <name>vantoro::TaskWindow</name>
    <message>
        <source>Extractions</source>
        <translation>Entpackvorgänge</translation>
    </message>
    <message>
        <source>File &amp;names:</source>
        <translation>Datei&amp;namen:</translation>
    </message>
    <message>
        <source>Encoding of file names</source>
        <translation>Kodierung der Dateinamen</translation>
    </message>
    <message numerus="yes">
        <source>%n archive(s)</source>
        <translation>
            <numerusform>%n Archiv</numerusform>
            <numerusform>%n Archive</numerusform>
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
        <translation>Menü</translation>
    </message>
</context>
<context>
    <name>vantoro::WaitPanel</name>
    <message>
        <source>Waiting</source>
        <translation>Wartet</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Cancel %1</source>
        <translation>%1 abbrechen</translation>
    </message>
</context>
</TS>
