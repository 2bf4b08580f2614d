<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="fr">
<context>
    <name>AppCommands</name>
    <message>
        <source>&amp;Open Archive…</source>
        <translation>&amp;Ouvrir une archive…</translation>
    </message>
    <message>
        <source>&amp;New Archive…</source>
        <translation>&amp;Nouvelle archive…</translation>
    </message>
    <message>
        <source>&amp;Extract…</source>
        <translation>&amp;Extraire…</translation>
    </message>
    <message>
        <source>Extract to the &amp;Desktop…</source>
        <translation>Extraire sur le &amp;bureau…</translation>
    </message>
    <message>
        <source>Extract &amp;Beside the Archives…</source>
        <translation>Extraire à &amp;côté des archives…</translation>
    </message>
    <message>
        <source>&amp;Look Inside Before Extracting</source>
        <translation>&amp;Voir le contenu avant d’extraire</translation>
    </message>
    <message>
        <source>Window with Side &amp;Panel</source>
        <translation>Fenêtre avec &amp;panneau latéral</translation>
    </message>
    <message>
        <source>Show &amp;Main Window</source>
        <translation>Afficher la fenêtre &amp;principale</translation>
    </message>
    <message>
        <source>&amp;Settings</source>
        <translation>&amp;Réglages</translation>
    </message>
    <message>
        <source>&amp;How to Use</source>
        <translation>&amp;Mode d’emploi</translation>
    </message>
    <message>
        <source>&amp;Keyboard Shortcuts</source>
        <translation>&amp;Raccourcis clavier</translation>
    </message>
    <message>
        <source>Get S&amp;upport</source>
        <translation>Obtenir de l’a&amp;ide</translation>
    </message>
    <message>
        <source>Home Pa&amp;ge</source>
        <translation>&amp;Site Web</translation>
    </message>
    <message>
        <source>&amp;About Vantoro</source>
        <translation>À propos de &amp;Vantoro</translation>
    </message>
    <message>
        <source>&amp;Close Window</source>
        <translation>&amp;Fermer la fenêtre</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Quitter</translation>
    </message>
</context>
<context>
    <name>AppSandboxFileAccess</name>
    <message>
        <source>Allow Access</source>
        <translation>Autoriser l’accès</translation>
    </message>
    <message>
        <source>%1 needs to access this path to continue. Click Allow to continue.</source>
        <translation>%1 a besoin d’accéder à cet emplacement pour continuer. Cliquez sur « Autoriser ».</translation>
    </message>
    <message>
        <source>Allow</source>
        <translation>Autoriser</translation>
    </message>
</context>
<context>
    <name>ArchiveTexts</name>
    <message>
        <source>encrypted, names too</source>
        <translation>chiffrée, noms compris</translation>
    </message>
    <message>
        <source>encrypted</source>
        <translation>chiffré</translation>
    </message>
    <message numerus="yes">
        <source>%Ln entries</source>
        <translation>
            <numerusform>%Ln élément</numerusform>
            <numerusform>%Ln éléments</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln files</source>
        <translation>
            <numerusform>%Ln fichier</numerusform>
            <numerusform>%Ln fichiers</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln folders</source>
        <translation>
            <numerusform>%Ln dossier</numerusform>
            <numerusform>%Ln dossiers</numerusform>
        </translation>
    </message>
    <message>
        <source>%1, %2 packed</source>
        <translation>%1, %2 compressés</translation>
    </message>
    <message>
        <source>names in %1</source>
        <translation>noms en %1</translation>
    </message>
    <message numerus="yes">
        <source>%Ln volumes</source>
        <translation>
            <numerusform>%Ln volume</numerusform>
            <numerusform>%Ln volumes</numerusform>
        </translation>
    </message>
    <message>
        <source>damaged: %1</source>
        <translation>endommagé : %1</translation>
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
        <translation>Europe de l’Ouest (ISO Latin 1)</translation>
    </message>
    <message>
        <source>Western (Windows 1252)</source>
        <translation>Europe de l’Ouest (Windows 1252)</translation>
    </message>
    <message>
        <source>Western (DOS 437)</source>
        <translation>Europe de l’Ouest (DOS 437)</translation>
    </message>
    <message>
        <source>Western (DOS 850)</source>
        <translation>Europe de l’Ouest (DOS 850)</translation>
    </message>
    <message>
        <source>Western (Mac OS Roman)</source>
        <translation>Europe de l’Ouest (Mac OS Roman)</translation>
    </message>
    <message>
        <source>Western (ISO Latin 9)</source>
        <translation>Europe de l’Ouest (ISO Latin 9)</translation>
    </message>
    <message>
        <source>Japanese (Shift JIS)</source>
        <translation>Japonais (Shift JIS)</translation>
    </message>
    <message>
        <source>Japanese (EUC)</source>
        <translation>Japonais (EUC)</translation>
    </message>
    <message>
        <source>Japanese (ISO 2022-JP)</source>
        <translation>Japonais (ISO 2022-JP)</translation>
    </message>
    <message>
        <source>Chinese, simplified (GBK)</source>
        <translation>Chinois simplifié (GBK)</translation>
    </message>
    <message>
        <source>Chinese, simplified (GB 18030)</source>
        <translation>Chinois simplifié (GB 18030)</translation>
    </message>
    <message>
        <source>Chinese, traditional (Big 5)</source>
        <translation>Chinois traditionnel (Big 5)</translation>
    </message>
    <message>
        <source>Korean (EUC, Windows 949)</source>
        <translation>Coréen (EUC, Windows 949)</translation>
    </message>
    <message>
        <source>Cyrillic (Windows 1251)</source>
        <translation>Cyrillique (Windows 1251)</translation>
    </message>
    <message>
        <source>Cyrillic (DOS 866)</source>
        <translation>Cyrillique (DOS 866)</translation>
    </message>
    <message>
        <source>Cyrillic (KOI8-R)</source>
        <translation>Cyrillique (KOI8-R)</translation>
    </message>
    <message>
        <source>Cyrillic (KOI8-U)</source>
        <translation>Cyrillique (KOI8-U)</translation>
    </message>
    <message>
        <source>Cyrillic (ISO 8859-5)</source>
        <translation>Cyrillique (ISO 8859-5)</translation>
    </message>
    <message>
        <source>Cyrillic (Mac OS)</source>
        <translation>Cyrillique (Mac OS)</translation>
    </message>
    <message>
        <source>Central European (Windows 1250)</source>
        <translation>Europe centrale (Windows 1250)</translation>
    </message>
    <message>
        <source>Central European (DOS 852)</source>
        <translation>Europe centrale (DOS 852)</translation>
    </message>
    <message>
        <source>Central European (ISO Latin 2)</source>
        <translation>Europe centrale (ISO Latin 2)</translation>
    </message>
    <message>
        <source>Central European (Mac OS)</source>
        <translation>Europe centrale (Mac OS)</translation>
    </message>
    <message>
        <source>Greek (Windows 1253)</source>
        <translation>Grec (Windows 1253)</translation>
    </message>
    <message>
        <source>Greek (ISO 8859-7)</source>
        <translation>Grec (ISO 8859-7)</translation>
    </message>
    <message>
        <source>Greek (DOS 737)</source>
        <translation>Grec (DOS 737)</translation>
    </message>
    <message>
        <source>Turkish (Windows 1254)</source>
        <translation>Turc (Windows 1254)</translation>
    </message>
    <message>
        <source>Turkish (ISO Latin 5)</source>
        <translation>Turc (ISO Latin 5)</translation>
    </message>
    <message>
        <source>Turkish (DOS 857)</source>
        <translation>Turc (DOS 857)</translation>
    </message>
    <message>
        <source>Hebrew (Windows 1255)</source>
        <translation>Hébreu (Windows 1255)</translation>
    </message>
    <message>
        <source>Hebrew (ISO 8859-8)</source>
        <translation>Hébreu (ISO 8859-8)</translation>
    </message>
    <message>
        <source>Hebrew (DOS 862)</source>
        <translation>Hébreu (DOS 862)</translation>
    </message>
    <message>
        <source>Arabic (Windows 1256)</source>
        <translation>Arabe (Windows 1256)</translation>
    </message>
    <message>
        <source>Arabic (ISO 8859-6)</source>
        <translation>Arabe (ISO 8859-6)</translation>
    </message>
    <message>
        <source>Arabic (DOS 864)</source>
        <translation>Arabe (DOS 864)</translation>
    </message>
    <message>
        <source>Baltic (Windows 1257)</source>
        <translation>Balte (Windows 1257)</translation>
    </message>
    <message>
        <source>Baltic (ISO Latin 4)</source>
        <translation>Balte (ISO Latin 4)</translation>
    </message>
    <message>
        <source>Baltic (ISO Latin 7)</source>
        <translation>Balte (ISO Latin 7)</translation>
    </message>
    <message>
        <source>Baltic (DOS 775)</source>
        <translation>Balte (DOS 775)</translation>
    </message>
    <message>
        <source>Vietnamese (Windows 1258)</source>
        <translation>Vietnamien (Windows 1258)</translation>
    </message>
    <message>
        <source>Thai (Windows 874)</source>
        <translation>Thaï (Windows 874)</translation>
    </message>
    <message>
        <source>South European (ISO Latin 3)</source>
        <translation>Europe du Sud (ISO Latin 3)</translation>
    </message>
    <message>
        <source>Nordic (ISO Latin 6)</source>
        <translation>Nordique (ISO Latin 6)</translation>
    </message>
    <message>
        <source>Celtic (ISO Latin 8)</source>
        <translation>Celtique (ISO Latin 8)</translation>
    </message>
    <message>
        <source>Nordic (DOS 865)</source>
        <translation>Nordique (DOS 865)</translation>
    </message>
    <message>
        <source>Portuguese (DOS 860)</source>
        <translation>Portugais (DOS 860)</translation>
    </message>
    <message>
        <source>Canadian French (DOS 863)</source>
        <translation>Français canadien (DOS 863)</translation>
    </message>
    <message>
        <source>Icelandic (DOS 861)</source>
        <translation>Islandais (DOS 861)</translation>
    </message>
</context>
<context>
    <name>CommandLine</name>
    <message>
        <source>there is no option &quot;%1&quot;</source>
        <translation>l’option « %1 » n’existe pas</translation>
    </message>
    <message>
        <source>&quot;--extract-to&quot; needs a folder</source>
        <translation>« --extract-to » demande un dossier</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a file here</source>
        <translation>« %1 » n’est pas un fichier local</translation>
    </message>
    <message>
        <source>no archive is given</source>
        <translation>aucune archive n’est indiquée</translation>
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
        <translation>Utilisation : vantoro [OPTION] [FICHIER...]

Ouvre des archives : les extrait, ou les affiche selon les réglages.
Sans archive, la fenêtre principale s’affiche.

  --extract-here         extraire chaque archive à côté d’elle
  --extract-to DOSSIER   extraire dans DOSSIER
  --extract-to-desktop   extraire dans le dossier Bureau des réglages
  --extract-ask          demander où extraire
  --extract              extraire là où le disent les réglages, ou demander
  --compress             créer une archive avec les fichiers
  --dbus-service         attendre des appels sur le bus de session
  -h, --help             afficher cette aide
  --version              afficher la version
  --                     tout ce qui suit est un fichier

Les fichiers sont des chemins ou des URI file://. vantoro-cli se passe d’écran.
</translation>
    </message>
</context>
<context>
    <name>EntryPreviewer</name>
    <message>
        <source>Reading “%1”…</source>
        <translation>Lecture de « %1 »…</translation>
    </message>
</context>
<context>
    <name>ExtractionSummary</name>
    <message>
        <source>&quot;%1&quot; was extracted</source>
        <translation>« %1 » a été extrait</translation>
    </message>
    <message numerus="yes">
        <source>%n archive(s) were extracted</source>
        <translation>
            <numerusform>%n archive a été extraite</numerusform>
            <numerusform>%n archives ont été extraites</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; could not be extracted</source>
        <translation>« %1 » n’a pas pu être extrait</translation>
    </message>
    <message>
        <source>%1 of %2 archives could not be extracted</source>
        <translation>%1 archives sur %2 n’ont pas pu être extraites</translation>
    </message>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>et %n autre</numerusform>
            <numerusform>et %n autres</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; in %2</source>
        <translation>« %1 » dans %2</translation>
    </message>
    <message numerus="yes">
        <source>%n entry(s) were damaged or refused</source>
        <translation>
            <numerusform>%n élément était endommagé ou a été refusé</numerusform>
            <numerusform>%n éléments étaient endommagés ou ont été refusés</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>FilePreview</name>
    <message numerus="yes">
        <source>%n item(s)</source>
        <translation>
            <numerusform>%n élément</numerusform>
            <numerusform>%n éléments</numerusform>
        </translation>
    </message>
    <message>
        <source>Cannot be read</source>
        <translation>Lecture impossible</translation>
    </message>
</context>
<context>
    <name>Formats</name>
    <message>
        <source>RPM package</source>
        <translation>Paquet RPM</translation>
    </message>
    <message>
        <source>tar archive</source>
        <translation>Archive tar</translation>
    </message>
    <message>
        <source>RAR archive</source>
        <translation>Archive RAR</translation>
    </message>
    <message>
        <source>ARJ archive</source>
        <translation>Archive ARJ</translation>
    </message>
    <message>
        <source>cpio archive</source>
        <translation>Archive cpio</translation>
    </message>
    <message>
        <source>ISO 9660 disc image</source>
        <translation>Image de disque ISO 9660</translation>
    </message>
    <message>
        <source>gzip file</source>
        <translation>Fichier gzip</translation>
    </message>
    <message>
        <source>bzip2 file</source>
        <translation>Fichier bzip2</translation>
    </message>
    <message>
        <source>xz file</source>
        <translation>Fichier xz</translation>
    </message>
    <message>
        <source>Zstandard file</source>
        <translation>Fichier Zstandard</translation>
    </message>
    <message>
        <source>LZ4 file</source>
        <translation>Fichier LZ4</translation>
    </message>
    <message>
        <source>lzip file</source>
        <translation>Fichier lzip</translation>
    </message>
    <message>
        <source>lzop file</source>
        <translation>Fichier lzop</translation>
    </message>
    <message>
        <source>Unix compress file</source>
        <translation>Fichier compress Unix</translation>
    </message>
    <message>
        <source>LZMA file</source>
        <translation>Fichier LZMA</translation>
    </message>
    <message>
        <source>zlib stream</source>
        <translation>Flux zlib</translation>
    </message>
    <message>
        <source>Brotli file</source>
        <translation>Fichier Brotli</translation>
    </message>
    <message>
        <source>Zip archive</source>
        <translation>Archive zip</translation>
    </message>
    <message>
        <source>LHA archive</source>
        <translation>Archive LHA</translation>
    </message>
    <message>
        <source>PMarc archive</source>
        <translation>Archive PMarc</translation>
    </message>
    <message>
        <source>Unix archive or Debian package</source>
        <translation>Archive Unix ou paquet Debian</translation>
    </message>
    <message>
        <source>xar archive</source>
        <translation>Archive xar</translation>
    </message>
    <message>
        <source>Web archive</source>
        <translation>Archive Web</translation>
    </message>
    <message>
        <source>NSIS installer</source>
        <translation>Installateur NSIS</translation>
    </message>
    <message>
        <source>7z archive</source>
        <translation>Archive 7z</translation>
    </message>
    <message>
        <source>Cabinet</source>
        <translation>Archive Cabinet</translation>
    </message>
    <message>
        <source>Windows installer package</source>
        <translation>Paquet d’installation Windows</translation>
    </message>
    <message>
        <source>Compound file</source>
        <translation>Fichier composé</translation>
    </message>
    <message>
        <source>Compiled help</source>
        <translation>Aide compilée</translation>
    </message>
    <message>
        <source>Compiled help 2</source>
        <translation>Aide compilée 2</translation>
    </message>
    <message>
        <source>Windows image</source>
        <translation>Image Windows</translation>
    </message>
    <message>
        <source>UDF disc image</source>
        <translation>Image de disque UDF</translation>
    </message>
    <message>
        <source>SquashFS image</source>
        <translation>Image SquashFS</translation>
    </message>
    <message>
        <source>CramFS image</source>
        <translation>Image CramFS</translation>
    </message>
    <message>
        <source>macOS disk image</source>
        <translation>Image disque macOS</translation>
    </message>
    <message>
        <source>Virtual disk</source>
        <translation>Disque virtuel</translation>
    </message>
    <message>
        <source>NTFS image</source>
        <translation>Image NTFS</translation>
    </message>
    <message>
        <source>APFS image</source>
        <translation>Image APFS</translation>
    </message>
    <message>
        <source>HFS+ image</source>
        <translation>Image HFS+</translation>
    </message>
    <message>
        <source>FAT image</source>
        <translation>Image FAT</translation>
    </message>
    <message>
        <source>ext file system image</source>
        <translation>Image de système de fichiers ext</translation>
    </message>
    <message>
        <source>Disk image</source>
        <translation>Image disque</translation>
    </message>
</context>
<context>
    <name>InformationWindow</name>
    <message>
        <source>Windows and the desktop</source>
        <translation>Fenêtres et bureau</translation>
    </message>
    <message>
        <source>Reads many formats, writes 7z</source>
        <translation>Lit de nombreux formats, écrit du 7z</translation>
    </message>
    <message>
        <source>Reads and writes further formats</source>
        <translation>Lit et écrit d’autres formats</translation>
    </message>
    <message>
        <source>LHA methods</source>
        <translation>Méthodes LHA</translation>
    </message>
    <message>
        <source>Deflate, whole blocks</source>
        <translation>Deflate, blocs entiers</translation>
    </message>
    <message>
        <source>Deflate, streams</source>
        <translation>Deflate, flux</translation>
    </message>
    <message>
        <source>Deflate, writing</source>
        <translation>Deflate, écriture</translation>
    </message>
    <message>
        <source>xz and lzma</source>
        <translation>xz et lzma</translation>
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
        <translation>Fichiers WAV dans les zip</translation>
    </message>
    <message>
        <source>Ciphers and checksums</source>
        <translation>Chiffrements et sommes de contrôle</translation>
    </message>
    <message>
        <source>Text encodings</source>
        <translation>Encodages de texte</translation>
    </message>
    <message>
        <source>Finding an encoding out</source>
        <translation>Détection d’un encodage</translation>
    </message>
    <message>
        <source>Confines the decoders</source>
        <translation>Confine les décodeurs</translation>
    </message>
    <message>
        <source>Strength of passwords</source>
        <translation>Robustesse des mots de passe</translation>
    </message>
</context>
<context>
    <name>KXUnarchiveWrapper</name>
    <message>
        <source>“%1” is too large to be shown: it has %2, and at most %3 are read for a preview.</source>
        <translation>« %1 » est trop volumineux pour être affiché : il fait %2, et un aperçu en lit au plus %3.</translation>
    </message>
    <message>
        <source>more than that</source>
        <translation>plus que cela</translation>
    </message>
    <message>
        <source>“%1” is encrypted, and the password does not fit.</source>
        <translation>« %1 » est chiffré et le mot de passe ne convient pas.</translation>
    </message>
    <message>
        <source>“%1” cannot be read: %2.</source>
        <translation>« %1 » ne peut pas être lu : %2.</translation>
    </message>
</context>
<context>
    <name>MainPages</name>
    <message>
        <source>Compress</source>
        <translation>Compresser</translation>
    </message>
    <message>
        <source>Extract</source>
        <translation>Extraire</translation>
    </message>
</context>
<context>
    <name>PackKinds</name>
    <message>
        <source>Zip archive</source>
        <translation>Archive zip</translation>
    </message>
    <message>
        <source>7-Zip archive</source>
        <translation>Archive 7-Zip</translation>
    </message>
    <message>
        <source>Gzip-compressed tar</source>
        <translation>Tar compressé avec gzip</translation>
    </message>
    <message>
        <source>XZ-compressed tar</source>
        <translation>Tar compressé avec xz</translation>
    </message>
    <message>
        <source>Zstandard-compressed tar</source>
        <translation>Tar compressé avec Zstandard</translation>
    </message>
    <message>
        <source>Bzip2-compressed tar</source>
        <translation>Tar compressé avec bzip2</translation>
    </message>
    <message>
        <source>Tar archive</source>
        <translation>Archive tar</translation>
    </message>
    <message>
        <source>LZ4-compressed tar</source>
        <translation>Tar compressé avec LZ4</translation>
    </message>
    <message>
        <source>Cpio archive</source>
        <translation>Archive cpio</translation>
    </message>
    <message>
        <source>CD image (ISO 9660)</source>
        <translation>Image de CD (ISO 9660)</translation>
    </message>
    <message>
        <source>Xar archive</source>
        <translation>Archive xar</translation>
    </message>
    <message>
        <source>Ar archive</source>
        <translation>Archive ar</translation>
    </message>
    <message>
        <source>Java archive</source>
        <translation>Archive Java</translation>
    </message>
    <message>
        <source>Comic book archive</source>
        <translation>Bande dessinée (archive)</translation>
    </message>
    <message>
        <source>Gzip-compressed file</source>
        <translation>Fichier compressé avec gzip</translation>
    </message>
    <message>
        <source>XZ-compressed file</source>
        <translation>Fichier compressé avec xz</translation>
    </message>
    <message>
        <source>Zstandard-compressed file</source>
        <translation>Fichier compressé avec Zstandard</translation>
    </message>
    <message>
        <source>Bzip2-compressed file</source>
        <translation>Fichier compressé avec bzip2</translation>
    </message>
    <message>
        <source>LZ4-compressed file</source>
        <translation>Fichier compressé avec LZ4</translation>
    </message>
</context>
<context>
    <name>PasswordGate</name>
    <message>
        <source>Checking the password…</source>
        <translation>Vérification du mot de passe…</translation>
    </message>
</context>
<context>
    <name>PasswordStrength</name>
    <message>
        <source>Weak</source>
        <translation>Faible</translation>
    </message>
    <message>
        <source>Fair</source>
        <translation>Moyen</translation>
    </message>
    <message>
        <source>Good</source>
        <translation>Bon</translation>
    </message>
    <message>
        <source>Strong</source>
        <translation>Fort</translation>
    </message>
</context>
<context>
    <name>PreviewContent</name>
    <message>
        <source>This picture cannot be shown: it is damaged, or too large to decode.</source>
        <translation>Cette image ne peut pas être affichée : elle est endommagée ou trop grande.</translation>
    </message>
    <message>
        <source>%1 × %2 pixels</source>
        <translation>%1 × %2 pixels</translation>
    </message>
    <message>
        <source>The beginning of %1</source>
        <translation>Le début de %1</translation>
    </message>
    <message>
        <source>This file is empty.</source>
        <translation>Ce fichier est vide.</translation>
    </message>
    <message>
        <source>There is no preview for this kind of file.</source>
        <translation>Pas d’aperçu pour ce type de fichier.</translation>
    </message>
</context>
<context>
    <name>ProgressPanel</name>
    <message>
        <source>%1 of %2</source>
        <translation>%1 sur %2</translation>
    </message>
    <message>
        <source>%1 of %2 files</source>
        <translation>%1 fichiers sur %2</translation>
    </message>
    <message>
        <source>A few seconds left</source>
        <translation>Encore quelques secondes</translation>
    </message>
    <message numerus="yes">
        <source>About %n seconds left</source>
        <translation>
            <numerusform>Encore %n seconde environ</numerusform>
            <numerusform>Encore %n secondes environ</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>About %n minute(s) left</source>
        <translation>
            <numerusform>Encore %n minute environ</numerusform>
            <numerusform>Encore %n minutes environ</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>About %n hour(s) left</source>
        <translation>
            <numerusform>Encore %n heure environ</numerusform>
            <numerusform>Encore %n heures environ</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>QFileDialog</name>
    <message>
        <source>Allowed files (%1)</source>
        <translation>Fichiers acceptés (%1)</translation>
    </message>
</context>
<context>
    <name>XADException</name>
    <message>
        <source>an internal error occurred</source>
        <translation>une erreur interne s’est produite</translation>
    </message>
    <message>
        <source>stopped by the user</source>
        <translation>arrêté par l’utilisateur</translation>
    </message>
    <message>
        <source>reading the archive failed</source>
        <translation>la lecture de l’archive a échoué</translation>
    </message>
    <message>
        <source>this is not an archive of a known format</source>
        <translation>ce n’est pas une archive d’un format connu</translation>
    </message>
    <message>
        <source>the archive ends too early</source>
        <translation>l’archive se termine trop tôt</translation>
    </message>
    <message>
        <source>the archive is damaged</source>
        <translation>l’archive est endommagée</translation>
    </message>
    <message>
        <source>the data are damaged (wrong checksum)</source>
        <translation>les données sont endommagées (somme de contrôle incorrecte)</translation>
    </message>
    <message>
        <source>the data are damaged (wrong size)</source>
        <translation>les données sont endommagées (taille incorrecte)</translation>
    </message>
    <message>
        <source>the compression method is not supported</source>
        <translation>la méthode de compression n’est pas prise en charge</translation>
    </message>
    <message>
        <source>the kind of encryption is not supported</source>
        <translation>ce type de chiffrement n’est pas pris en charge</translation>
    </message>
    <message>
        <source>the archive uses a feature that is not supported</source>
        <translation>l’archive utilise une fonction qui n’est pas prise en charge</translation>
    </message>
    <message>
        <source>a password is needed</source>
        <translation>un mot de passe est nécessaire</translation>
    </message>
    <message>
        <source>the password is wrong, or the data are damaged</source>
        <translation>le mot de passe est incorrect ou les données sont endommagées</translation>
    </message>
    <message>
        <source>a part of the archive is missing</source>
        <translation>une partie de l’archive est manquante</translation>
    </message>
    <message>
        <source>the archive asks for more than is allowed</source>
        <translation>l’archive demande plus que ce qui est permis</translation>
    </message>
    <message>
        <source>there is not enough memory</source>
        <translation>il n’y a pas assez de mémoire</translation>
    </message>
    <message>
        <source>the reader for this format stopped unexpectedly</source>
        <translation>le lecteur de ce format s’est arrêté de façon inattendue</translation>
    </message>
    <message>
        <source>the reader for this format does not get on</source>
        <translation>le lecteur de ce format n’avance plus</translation>
    </message>
    <message>
        <source>entries of the archive overlap, as in a forged archive</source>
        <translation>des éléments de l’archive se chevauchent, comme dans une archive falsifiée</translation>
    </message>
    <message>
        <source>the name is not safe</source>
        <translation>le nom n’est pas sûr</translation>
    </message>
    <message>
        <source>the link leads out of the destination folder</source>
        <translation>le lien mène hors du dossier de destination</translation>
    </message>
    <message>
        <source>devices, pipes and sockets are not created</source>
        <translation>les périphériques, tubes et sockets ne sont pas créés</translation>
    </message>
    <message>
        <source>the entry was refused</source>
        <translation>l’élément a été refusé</translation>
    </message>
    <message>
        <source>the name is already taken</source>
        <translation>ce nom est déjà pris</translation>
    </message>
    <message>
        <source>the disk is full</source>
        <translation>le disque est plein</translation>
    </message>
    <message>
        <source>writing failed</source>
        <translation>l’écriture a échoué</translation>
    </message>
    <message>
        <source>the destination folder cannot be written to</source>
        <translation>le dossier de destination n’est pas accessible en écriture</translation>
    </message>
    <message>
        <source>the destination folder has vanished</source>
        <translation>le dossier de destination a disparu</translation>
    </message>
    <message>
        <source>the archive would grow out of proportion</source>
        <translation>l’archive prendrait une taille démesurée</translation>
    </message>
    <message>
        <source>the encoding of the file names is not known</source>
        <translation>l’encodage des noms de fichiers est inconnu</translation>
    </message>
    <message>
        <source>the file cannot be read</source>
        <translation>le fichier ne peut pas être lu</translation>
    </message>
    <message>
        <source>archives of this kind cannot be created</source>
        <translation>ce type d’archive ne peut pas être créé</translation>
    </message>
    <message>
        <source>something unknown follows the end of the compressed data</source>
        <translation>des données inconnues suivent la fin des données compressées</translation>
    </message>
    <message>
        <source>the program was updated while it runs; please start it again</source>
        <translation>le programme a été mis à jour pendant son exécution ; veuillez le redémarrer</translation>
    </message>
    <message>
        <source>an unknown error occurred</source>
        <translation>une erreur inconnue s’est produite</translation>
    </message>
</context>
<context>
    <name>vantoro::AppCommands</name>
    <message>
        <source>Extract page</source>
        <translation>Page Extraire</translation>
    </message>
    <message>
        <source>Compress page</source>
        <translation>Page Compresser</translation>
    </message>
    <message>
        <source>Next page</source>
        <translation>Page suivante</translation>
    </message>
    <message>
        <source>Preview the chosen entry</source>
        <translation>Aperçu de l’élément choisi</translation>
    </message>
    <message>
        <source>Filter entries</source>
        <translation>Filtrer les éléments</translation>
    </message>
    <message>
        <source>Choose everything</source>
        <translation>Tout sélectionner</translation>
    </message>
    <message>
        <source>Open or close a folder of the archive</source>
        <translation>Ouvrir ou fermer un dossier de l’archive</translation>
    </message>
    <message>
        <source>Stop what runs, close a question or a preview</source>
        <translation>Arrêter l’opération, fermer une question ou un aperçu</translation>
    </message>
</context>
<context>
    <name>vantoro::AppDelegate</name>
    <message>
        <source>Select archives to extract</source>
        <translation>Choisir les archives à extraire</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>Choisir</translation>
    </message>
    <message>
        <source>Please select the extracted destination</source>
        <translation>Choisissez la destination de l’extraction</translation>
    </message>
    <message>
        <source>Extract</source>
        <translation>Extraire</translation>
    </message>
</context>
<context>
    <name>vantoro::ArchiveTreeModel</name>
    <message>
        <source>Name</source>
        <translation>Nom</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Taille</translation>
    </message>
    <message>
        <source>Modified</source>
        <translation>Modifié</translation>
    </message>
</context>
<context>
    <name>vantoro::ChosenExtraction</name>
    <message>
        <source>Please select the destination</source>
        <translation>Choisissez la destination</translation>
    </message>
    <message>
        <source>Extract</source>
        <translation>Extraire</translation>
    </message>
    <message>
        <source>Extracting…</source>
        <translation>Extraction…</translation>
    </message>
</context>
<context>
    <name>vantoro::CompressWindow</name>
    <message>
        <source>Start</source>
        <translation>Démarrer</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Compression Options</source>
        <translation>Options de compression</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Aucun</translation>
    </message>
    <message>
        <source>Type it once more</source>
        <translation>Saisissez-le à nouveau</translation>
    </message>
    <message>
        <source>Repeat the password</source>
        <translation>Répéter le mot de passe</translation>
    </message>
    <message>
        <source>Format:</source>
        <translation>Format :</translation>
    </message>
    <message>
        <source>Password:</source>
        <translation>Mot de passe :</translation>
    </message>
    <message>
        <source>Repeat:</source>
        <translation>Confirmer :</translation>
    </message>
    <message>
        <source>The two passwords differ.</source>
        <translation>Les deux mots de passe sont différents.</translation>
    </message>
</context>
<context>
    <name>vantoro::ContentsPresenter</name>
    <message>
        <source>Opening “%1”…</source>
        <translation>Ouverture de « %1 »…</translation>
    </message>
    <message numerus="yes">
        <source>%Ln entries extracted</source>
        <translation>
            <numerusform>%Ln élément extrait</numerusform>
            <numerusform>%Ln éléments extraits</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1, and %Ln more failed</source>
        <translation>
            <numerusform>%1, et %Ln autre échec</numerusform>
            <numerusform>%1, et %Ln autres échecs</numerusform>
        </translation>
    </message>
    <message>
        <source>The list is incomplete: %1</source>
        <translation>La liste est incomplète : %1</translation>
    </message>
</context>
<context>
    <name>vantoro::EncodingPanel</name>
    <message>
        <source>Stop</source>
        <translation>Arrêter</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Continuer</translation>
    </message>
    <message>
        <source>The file names in &quot;%1&quot; do not say how they are written. Choose the encoding in which this name reads right:</source>
        <translation>Les noms de fichiers de « %1 » n’indiquent pas leur encodage. Choisissez celui dans lequel ce nom se lit correctement :</translation>
    </message>
    <message>
        <source>This name would read: %1</source>
        <translation>Ce nom se lirait : %1</translation>
    </message>
</context>
<context>
    <name>vantoro::ExtractionReporter</name>
    <message>
        <source>Show in Folder</source>
        <translation>Afficher dans le dossier</translation>
    </message>
    <message>
        <source>Show Report</source>
        <translation>Afficher le rapport</translation>
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
        <translation>Mode d’emploi</translation>
    </message>
    <message>
        <source>Extract</source>
        <translation>Extraire</translation>
    </message>
    <message>
        <source>Drop archives on the window, or open them in the file manager. They come out one after another; whatever must be asked is asked in the archive&apos;s own row.</source>
        <translation>Déposez des archives sur la fenêtre ou ouvrez-les dans le gestionnaire de fichiers. Elles sont extraites l’une après l’autre ; les questions apparaissent dans la ligne de l’archive.</translation>
    </message>
    <message>
        <source>Look inside</source>
        <translation>Voir le contenu</translation>
    </message>
    <message>
        <source>With &quot;Look inside before extracting&quot; in the settings, an opened archive shows what it holds. Press Space to preview an entry, and extract all of it or only what you choose.</source>
        <translation>Avec « Voir le contenu avant d’extraire » dans les réglages, une archive ouverte montre ce qu’elle contient. Appuyez sur Espace pour un aperçu, puis extrayez tout ou seulement votre choix.</translation>
    </message>
    <message>
        <source>Compress</source>
        <translation>Compresser</translation>
    </message>
    <message>
        <source>Drop files and folders on the Compress page, choose a kind and, if you like, a password, and say where the archive is to be written.</source>
        <translation>Déposez des fichiers et des dossiers sur la page Compresser, choisissez un type et, si vous le voulez, un mot de passe, puis l’emplacement de l’archive.</translation>
    </message>
    <message>
        <source>From the file manager</source>
        <translation>Depuis le gestionnaire de fichiers</translation>
    </message>
    <message>
        <source>The menu of an archive offers to extract it there, to the Desktop, or to a folder of your choice.</source>
        <translation>Le menu d’une archive propose de l’extraire sur place, sur le bureau ou dans le dossier de votre choix.</translation>
    </message>
    <message>
        <source>Always at hand</source>
        <translation>Toujours à portée de main</translation>
    </message>
    <message>
        <source>Vantoro goes on running when its windows are closed. Its icon in the tray brings them back, and Quit ends it.</source>
        <translation>Vantoro continue de fonctionner quand ses fenêtres sont fermées. Son icône dans la zone de notification les rouvre, et Quitter y met fin.</translation>
    </message>
</context>
<context>
    <name>vantoro::InformationWindow</name>
    <message>
        <source>About Vantoro</source>
        <translation>À propos de Vantoro</translation>
    </message>
    <message>
        <source>&amp;Formats</source>
        <translation>&amp;Formats</translation>
    </message>
    <message>
        <source>&amp;Libraries</source>
        <translation>&amp;Bibliothèques</translation>
    </message>
    <message>
        <source>Vantoro</source>
        <translation>Vantoro</translation>
    </message>
    <message>
        <source>Version %1, with Qt %2</source>
        <translation>Version %1, avec Qt %2</translation>
    </message>
    <message>
        <source>Free software under the GNU General Public License, version 3 or later.</source>
        <translation>Logiciel libre sous licence publique générale GNU, version 3 ou ultérieure.</translation>
    </message>
    <message>
        <source>Find a format or an extension</source>
        <translation>Chercher un format ou une extension</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>Extensions</source>
        <translation>Extensions</translation>
    </message>
    <message>
        <source>Formats that can be read</source>
        <translation>Formats lisibles</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>Bibliothèque</translation>
    </message>
    <message>
        <source>Use</source>
        <translation>Utilisation</translation>
    </message>
    <message>
        <source>Licence</source>
        <translation>Licence</translation>
    </message>
    <message>
        <source>Libraries in use</source>
        <translation>Bibliothèques utilisées</translation>
    </message>
</context>
<context>
    <name>vantoro::KXArchiveContentsViewController</name>
    <message>
        <source>Extract</source>
        <translation>Extraire</translation>
    </message>
    <message>
        <source>Please select the archive</source>
        <translation>Choisissez l’archive</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>Choisir</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Aperçu</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Fermer</translation>
    </message>
    <message>
        <source>Filter by name</source>
        <translation>Filtrer par nom</translation>
    </message>
    <message>
        <source>Open…</source>
        <translation>Ouvrir…</translation>
    </message>
    <message>
        <source>Choose another archive</source>
        <translation>Choisir une autre archive</translation>
    </message>
    <message>
        <source>Extract what is selected, or everything (Ctrl+E)</source>
        <translation>Extraire la sélection, ou tout (Ctrl+E)</translation>
    </message>
    <message>
        <source>Look at the selected file (Space)</source>
        <translation>Aperçu du fichier sélectionné (Espace)</translation>
    </message>
    <message>
        <source>Close the archive</source>
        <translation>Fermer l’archive</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Réglages</translation>
    </message>
    <message>
        <source>Close Folder</source>
        <translation>Replier le dossier</translation>
    </message>
    <message>
        <source>Open Folder</source>
        <translation>Déplier le dossier</translation>
    </message>
    <message>
        <source>Extract All</source>
        <translation>Tout extraire</translation>
    </message>
    <message>
        <source>Contents of %1</source>
        <translation>Contenu de %1</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>Information</translation>
    </message>
    <message>
        <source>DO NOT support quicklook this archive, please close &apos;Preview an archive&apos;s file list without extraction&apos; in Preferences Panel to extract directly</source>
        <translation>Cette archive ne peut pas être affichée. Désactivez « Voir le contenu avant d’extraire » dans les réglages pour l’extraire directement.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Wrong Password!</source>
        <translation>Mot de passe incorrect !</translation>
    </message>
    <message>
        <source>This archive is empty</source>
        <translation>Cette archive est vide</translation>
    </message>
    <message>
        <source>Extract…</source>
        <translation>Extraire…</translation>
    </message>
    <message>
        <source>Extract All…</source>
        <translation>Tout extraire…</translation>
    </message>
    <message>
        <source>Extract to &quot;%1&quot;</source>
        <translation>Extraire vers « %1 »</translation>
    </message>
    <message>
        <source>Extract All to &quot;%1&quot;</source>
        <translation>Tout extraire vers « %1 »</translation>
    </message>
</context>
<context>
    <name>vantoro::KXArchiveManageController</name>
    <message>
        <source>DO NOT support unarchive this archive due to the format error.</source>
        <translation>Cette archive ne peut pas être extraite à cause d’une erreur de format.</translation>
    </message>
    <message>
        <source>ERROR happened while reading the contents of the file &quot;%1&quot;: %2</source>
        <translation>Une erreur s’est produite lors de la lecture du contenu du fichier « %1 » : %2</translation>
    </message>
    <message>
        <source>ERROR happened while extracting the contents of the file &quot;%1&quot;: %2</source>
        <translation>Une erreur s’est produite lors de l’extraction du contenu du fichier « %1 » : %2</translation>
    </message>
    <message>
        <source>the result could not be moved into the folder &quot;%1&quot;</source>
        <translation>le résultat n’a pas pu être déplacé dans le dossier « %1 »</translation>
    </message>
    <message>
        <source>The archive could not be moved to the Trash.</source>
        <translation>L’archive n’a pas pu être mise à la corbeille.</translation>
    </message>
    <message>
        <source>DO NOT extract the files &quot;%1&quot; from the archive &quot;%2&quot;:
%3</source>
        <translation>Les fichiers « %1 » n’ont pas pu être extraits de l’archive « %2 » :
%3</translation>
    </message>
    <message>
        <source>DO NOT extract the files &quot;%1&quot; from archive &quot;%2&quot;: %3</source>
        <translation>Les fichiers « %1 » n’ont pas pu être extraits de l’archive « %2 » : %3</translation>
    </message>
    <message>
        <source>The archive &quot;%1&quot; of %2 would unpack to %3. Archives that are made to fill a disk look like this.</source>
        <translation>L’archive « %1 » de %2 occuperait %3 une fois extraite. C’est à cela que ressemblent les archives faites pour remplir un disque.</translation>
    </message>
    <message>
        <source>The contents of the archive &quot;%1&quot; need %2, but only %3 are free in the destination.</source>
        <translation>Le contenu de l’archive « %1 » demande %2, mais la destination n’a que %3 de libre.</translation>
    </message>
    <message>
        <source>The archive &quot;%1&quot; of %2 holds %3 entries.</source>
        <translation>L’archive « %1 » de %2 contient %3 éléments.</translation>
    </message>
    <message>
        <source>The archive &quot;%1&quot; could not be read to its end: %2</source>
        <translation>L’archive « %1 » n’a pas pu être lue jusqu’à la fin : %2</translation>
    </message>
</context>
<context>
    <name>vantoro::KXArchiveTaskView</name>
    <message>
        <source>%1 (+%2 more)</source>
        <translation>%1 (+%2 autres)</translation>
    </message>
    <message>
        <source>Preparing to extract &quot;%1&quot;</source>
        <translation>Préparation de l’extraction de « %1 »</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Arrêter</translation>
    </message>
    <message>
        <source>Extract to Desktop</source>
        <translation>Extraire sur le bureau</translation>
    </message>
    <message>
        <source>Choose Folder…</source>
        <translation>Choisir un dossier…</translation>
    </message>
    <message>
        <source>You may not write to the folder &quot;%1&quot;. Where should &quot;%2&quot; be extracted to?</source>
        <translation>Vous ne pouvez pas écrire dans le dossier « %1 ». Où faut-il extraire « %2 » ?</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Continuer</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Extracting &quot;%1&quot;</source>
        <translation>Extraction de « %1 »</translation>
    </message>
</context>
<context>
    <name>vantoro::KXDropArchiveView</name>
    <message>
        <source>Drop an archive here</source>
        <translation>Déposez une archive ici</translation>
    </message>
    <message>
        <source>to look inside, preview and extract what you need</source>
        <translation>pour en voir le contenu et extraire ce qu’il vous faut</translation>
    </message>
    <message>
        <source>Choose an Archive…</source>
        <translation>Choisir une archive…</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>Information</translation>
    </message>
    <message>
        <source>ONLY preview one archive at a time</source>
        <translation>Une seule archive peut être affichée à la fois</translation>
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
        <translation>Déposez ici les fichiers et dossiers à compresser</translation>
    </message>
    <message>
        <source>or choose them from your folders</source>
        <translation>ou choisissez-les dans vos dossiers</translation>
    </message>
    <message>
        <source>Add Files…</source>
        <translation>Ajouter des fichiers…</translation>
    </message>
</context>
<context>
    <name>vantoro::KXEncodePopButton</name>
    <message>
        <source>Text encoding</source>
        <translation>Encodage du texte</translation>
    </message>
    <message>
        <source>AUTO Dectect</source>
        <translation>Détection automatique</translation>
    </message>
    <message>
        <source>Default encoding</source>
        <translation>Encodage par défaut</translation>
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
        <translation>&amp;Menu</translation>
    </message>
    <message>
        <source>How to use</source>
        <translation>Mode d’emploi</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Réglages</translation>
    </message>
</context>
<context>
    <name>vantoro::KXPackViewController</name>
    <message>
        <source>Compress</source>
        <translation>Compresser</translation>
    </message>
    <message>
        <source>Please select the files</source>
        <translation>Choisissez les fichiers</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>Choisir</translation>
    </message>
    <message numerus="yes">
        <source>%n item(s)</source>
        <translation>
            <numerusform>%n élément</numerusform>
            <numerusform>%n éléments</numerusform>
        </translation>
    </message>
    <message>
        <source>Please select the destination</source>
        <translation>Choisissez la destination</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>Information</translation>
    </message>
    <message>
        <source>Please drag files and folers here!</source>
        <translation>Faites glisser ici des fichiers et des dossiers !</translation>
    </message>
    <message>
        <source>Compressing…</source>
        <translation>Compression en cours…</translation>
    </message>
    <message>
        <source>Add…</source>
        <translation>Ajouter…</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Vider</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Format</translation>
    </message>
    <message>
        <source>Options…</source>
        <translation>Options…</translation>
    </message>
    <message>
        <source>&amp;Format</source>
        <translation>&amp;Format</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Aucun</translation>
    </message>
    <message>
        <source>&amp;Password</source>
        <translation>&amp;Mot de passe</translation>
    </message>
</context>
<context>
    <name>vantoro::KXTableCellView</name>
    <message>
        <source>Preview</source>
        <translation>Aperçu</translation>
    </message>
    <message>
        <source>Remove from the list</source>
        <translation>Retirer de la liste</translation>
    </message>
    <message>
        <source>Preview %1</source>
        <translation>Aperçu de %1</translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation>Retirer %1</translation>
    </message>
</context>
<context>
    <name>vantoro::KXTaskListsView</name>
    <message>
        <source>Extractions</source>
        <translation>Extractions</translation>
    </message>
</context>
<context>
    <name>vantoro::MainWindows</name>
    <message>
        <source>Stop compressing and quit?</source>
        <translation>Arrêter la compression et quitter ?</translation>
    </message>
    <message>
        <source>An archive is being written. It will not be kept.</source>
        <translation>Une archive est en cours d’écriture. Elle ne sera pas conservée.</translation>
    </message>
    <message>
        <source>Stop extracting and quit?</source>
        <translation>Arrêter l’extraction et quitter ?</translation>
    </message>
    <message>
        <source>An archive is being extracted. What is not finished is removed.</source>
        <translation>Une archive est en cours d’extraction. Ce qui n’est pas terminé sera supprimé.</translation>
    </message>
    <message>
        <source>Go On</source>
        <translation>Poursuivre</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Quitter</translation>
    </message>
</context>
<context>
    <name>vantoro::PackTable</name>
    <message>
        <source>Files to compress</source>
        <translation>Fichiers à compresser</translation>
    </message>
</context>
<context>
    <name>vantoro::PasswordField</name>
    <message>
        <source>Password</source>
        <translation>Mot de passe</translation>
    </message>
    <message>
        <source>Caps Lock is on</source>
        <translation>Verrouillage des majuscules activé</translation>
    </message>
    <message>
        <source>Hide password</source>
        <translation>Masquer le mot de passe</translation>
    </message>
    <message>
        <source>Show password</source>
        <translation>Afficher le mot de passe</translation>
    </message>
</context>
<context>
    <name>vantoro::PasswordPanel</name>
    <message>
        <source>Password &amp;encoding:</source>
        <translation>&amp;Encodage du mot de passe :</translation>
    </message>
    <message>
        <source>Password encoding</source>
        <translation>Encodage du mot de passe</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Arrêter</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Continuer</translation>
    </message>
    <message>
        <source>Enter a PASSWORD to open the archive &quot;%1&quot;.</source>
        <translation>Saisissez le mot de passe pour ouvrir l’archive « %1 ».</translation>
    </message>
    <message>
        <source>That password is not right. Please try again.</source>
        <translation>Ce mot de passe est incorrect. Veuillez réessayer.</translation>
    </message>
    <message>
        <source>Caps Lock is on.</source>
        <translation>Le verrouillage des majuscules est activé.</translation>
    </message>
</context>
<context>
    <name>vantoro::PasswordPrompt</name>
    <message>
        <source>Caps Lock is on</source>
        <translation>Verrouillage des majuscules activé</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Mot de passe</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>“%1” is encrypted. Which password opens it?</source>
        <translation>« %1 » est chiffré. Quel est son mot de passe ?</translation>
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
        <translation>Extraire des archives…</translation>
    </message>
    <message>
        <source>Open Main Window</source>
        <translation>Ouvrir la fenêtre principale</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Réglages</translation>
    </message>
    <message>
        <source>How to Use</source>
        <translation>Mode d’emploi</translation>
    </message>
    <message>
        <source>Quit Vantoro</source>
        <translation>Quitter Vantoro</translation>
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
        <translation>Ouvrir</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Aperçu</translation>
    </message>
    <message>
        <source>Contents</source>
        <translation>Contenu</translation>
    </message>
    <message>
        <source>Nothing to show</source>
        <translation>Rien à afficher</translation>
    </message>
</context>
<context>
    <name>vantoro::PreviewWindow</name>
    <message>
        <source>Extract</source>
        <translation>Extraire</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Aperçu</translation>
    </message>
    <message>
        <source>Close Preview</source>
        <translation>Fermer l’aperçu</translation>
    </message>
    <message>
        <source>Extract This File</source>
        <translation>Extraire ce fichier</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>Image</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Texte</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Pages</translation>
    </message>
    <message>
        <source>This document is protected by a password of its own.</source>
        <translation>Ce document est protégé par son propre mot de passe.</translation>
    </message>
    <message>
        <source>This document is damaged.</source>
        <translation>Ce document est endommagé.</translation>
    </message>
    <message numerus="yes">
        <source>%Ln pages</source>
        <translation>
            <numerusform>%Ln page</numerusform>
            <numerusform>%Ln pages</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>vantoro::ProgressOverlay</name>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Working</source>
        <translation>En cours</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Progression</translation>
    </message>
    <message>
        <source>Stopping…</source>
        <translation>Arrêt en cours…</translation>
    </message>
</context>
<context>
    <name>vantoro::ProgressPanel</name>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>%1 — %2/s</source>
        <translation>%1 — %2/s</translation>
    </message>
    <message>
        <source>Stopping…</source>
        <translation>Arrêt en cours…</translation>
    </message>
</context>
<context>
    <name>vantoro::ReportWindow</name>
    <message>
        <source>Report</source>
        <translation>Rapport</translation>
    </message>
    <message>
        <source>Files that were refused or damaged</source>
        <translation>Fichiers refusés ou endommagés</translation>
    </message>
    <message>
        <source>&amp;Copy Report</source>
        <translation>&amp;Copier le rapport</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Fermer</translation>
    </message>
</context>
<context>
    <name>vantoro::SettingsCard</name>
    <message>
        <source>Until Vantoro is started again.</source>
        <translation>Jusqu’au prochain démarrage de Vantoro.</translation>
    </message>
</context>
<context>
    <name>vantoro::SettingsWindow</name>
    <message>
        <source>Settings</source>
        <translation>Réglages</translation>
    </message>
    <message>
        <source>Opening archives</source>
        <translation>Ouverture des archives</translation>
    </message>
    <message>
        <source>&amp;Look inside before extracting</source>
        <translation>&amp;Voir le contenu avant d’extraire</translation>
    </message>
    <message>
        <source>An archive that you open is shown first, and extracted when you say so.</source>
        <translation>Une archive ouverte est d’abord affichée, puis extraite quand vous le demandez.</translation>
    </message>
    <message>
        <source>Main window with a &amp;side panel</source>
        <translation>Fenêtre principale avec un panneau &amp;latéral</translation>
    </message>
    <message>
        <source>One window with the pages listed at its side, instead of the one with tabs. It extracts what you open without showing it first.</source>
        <translation>Une fenêtre dont les pages sont listées sur le côté, au lieu d’onglets. Elle extrait ce que vous ouvrez sans l’afficher d’abord.</translation>
    </message>
    <message>
        <source>Only where it is needed</source>
        <translation>Seulement si nécessaire</translation>
    </message>
    <message>
        <source>Always</source>
        <translation>Toujours</translation>
    </message>
    <message>
        <source>Never</source>
        <translation>Jamais</translation>
    </message>
    <message>
        <source>Extracting</source>
        <translation>Extraction</translation>
    </message>
    <message>
        <source>Make a &amp;folder for what comes out</source>
        <translation>Créer un &amp;dossier pour le résultat</translation>
    </message>
    <message>
        <source>It is not needed when the archive holds a single item. Never: everything lies loose in the destination.</source>
        <translation>Inutile quand l’archive ne contient qu’un élément. Jamais : tout se retrouve en vrac dans la destination.</translation>
    </message>
    <message>
        <source>&amp;Open what was extracted</source>
        <translation>&amp;Ouvrir ce qui a été extrait</translation>
    </message>
    <message>
        <source>The folder or file opens when it is ready.</source>
        <translation>Le dossier ou le fichier s’ouvre dès qu’il est prêt.</translation>
    </message>
    <message>
        <source>Move the archive to the &amp;Trash</source>
        <translation>Mettre l’archive à la &amp;corbeille</translation>
    </message>
    <message>
        <source>With all its parts, once everything has come out whole.</source>
        <translation>Avec toutes ses parties, une fois que tout a été extrait intact.</translation>
    </message>
    <message>
        <source>Give the new folder the archive&apos;s &amp;date</source>
        <translation>Donner au nouveau dossier la d&amp;ate de l’archive</translation>
    </message>
    <message>
        <source>Otherwise the folder bears the time of its extraction. Files always keep their own dates.</source>
        <translation>Sinon, le dossier porte l’heure de l’extraction. Les fichiers gardent toujours leurs dates.</translation>
    </message>
    <message>
        <source>Ask every time</source>
        <translation>Demander chaque fois</translation>
    </message>
    <message>
        <source>Beside the archive</source>
        <translation>À côté de l’archive</translation>
    </message>
    <message>
        <source>Places</source>
        <translation>Emplacements</translation>
    </message>
    <message>
        <source>&amp;Where archives are extracted to</source>
        <translation>&amp;Où extraire les archives</translation>
    </message>
    <message>
        <source>Holds for archives that you open or drop, and for the file manager&apos;s menu.</source>
        <translation>Vaut pour les archives que vous ouvrez ou déposez, et pour le menu du gestionnaire de fichiers.</translation>
    </message>
    <message>
        <source>&amp;Desktop folder</source>
        <translation>Dossier &amp;Bureau</translation>
    </message>
    <message>
        <source>Where &quot;Extract to the Desktop&quot; puts things.</source>
        <translation>Là où « Extraire sur le bureau » place les fichiers.</translation>
    </message>
    <message>
        <source> %</source>
        <translation> %</translation>
    </message>
    <message>
        <source>File names in old archives</source>
        <translation>Noms de fichiers des anciennes archives</translation>
    </message>
    <message>
        <source>&amp;Encoding of file names</source>
        <translation>&amp;Encodage des noms de fichiers</translation>
    </message>
    <message>
        <source>How names are read in archives that do not say it themselves. Without a choice, it is found out.</source>
        <translation>Comment lire les noms dans les archives qui ne l’indiquent pas. Sans choix, il est détecté.</translation>
    </message>
    <message>
        <source>Ask when &amp;less sure than</source>
        <translation>Demander si la certitude est &amp;inférieure à</translation>
    </message>
    <message>
        <source>A guess at the encoding that is surer than this is used without a question.</source>
        <translation>Une estimation plus sûre que cela est utilisée sans question.</translation>
    </message>
    <message>
        <source>Choose the Desktop folder</source>
        <translation>Choisir le dossier Bureau</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>Choisir</translation>
    </message>
</context>
<context>
    <name>vantoro::ShortcutsWindow</name>
    <message>
        <source>Keyboard Shortcuts</source>
        <translation>Raccourcis clavier</translation>
    </message>
    <message>
        <source>In every window</source>
        <translation>Dans chaque fenêtre</translation>
    </message>
    <message>
        <source>On the pages</source>
        <translation>Sur les pages</translation>
    </message>
</context>
<context>
    <name>vantoro::SideTable</name>
    <message>
        <source>Pages</source>
        <translation>Pages</translation>
    </message>
</context>
<context>
    <name>vantoro::SpinningIndicator</name>
    <message>
        <source>Busy</source>
        <translation>Occupé</translation>
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
        <translation>Robustesse du mot de passe</translation>
    </message>
</context>
<context>
    <name>vantoro::TaskWindow</name>
    <message>
        <source>Extractions</source>
        <translation>Extractions</translation>
    </message>
    <message>
        <source>File &amp;names:</source>
        <translation>&amp;Noms de fichiers :</translation>
    </message>
    <message>
        <source>Encoding of file names</source>
        <translation>Encodage des noms de fichiers</translation>
    </message>
    <message numerus="yes">
        <source>%n archive(s)</source>
        <translation>
            <numerusform>%n archive</numerusform>
            <numerusform>%n archives</numerusform>
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
        <translation>Menu</translation>
    </message>
</context>
<context>
    <name>vantoro::WaitPanel</name>
    <message>
        <source>Waiting</source>
        <translation>En attente</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Annuler</translation>
    </message>
    <message>
        <source>Cancel %1</source>
        <translation>Annuler %1</translation>
    </message>
</context>
</TS>
