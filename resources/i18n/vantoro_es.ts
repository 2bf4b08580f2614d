<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="es">
<context>
    <name>AppCommands</name>
    <message>
        <source>&amp;Open Archive…</source>
        <translation>&amp;Abrir archivo…</translation>
    </message>
    <message>
        <source>&amp;New Archive…</source>
        <translation>&amp;Nuevo archivo comprimido…</translation>
    </message>
    <message>
        <source>&amp;Extract…</source>
        <translation>&amp;Extraer…</translation>
    </message>
    <message>
        <source>Extract to the &amp;Desktop…</source>
        <translation>Extraer en el &amp;escritorio…</translation>
    </message>
    <message>
        <source>Extract &amp;Beside the Archives…</source>
        <translation>Extraer &amp;junto a los archivos…</translation>
    </message>
    <message>
        <source>&amp;Look Inside Before Extracting</source>
        <translation>&amp;Ver el contenido antes de extraer</translation>
    </message>
    <message>
        <source>Window with Side &amp;Panel</source>
        <translation>Ventana con &amp;panel lateral</translation>
    </message>
    <message>
        <source>Show &amp;Main Window</source>
        <translation>Mostrar la ventana &amp;principal</translation>
    </message>
    <message>
        <source>&amp;Settings</source>
        <translation>A&amp;justes</translation>
    </message>
    <message>
        <source>&amp;How to Use</source>
        <translation>&amp;Cómo se usa</translation>
    </message>
    <message>
        <source>&amp;Keyboard Shortcuts</source>
        <translation>&amp;Atajos de teclado</translation>
    </message>
    <message>
        <source>Get S&amp;upport</source>
        <translation>Obtener ay&amp;uda</translation>
    </message>
    <message>
        <source>Home Pa&amp;ge</source>
        <translation>Página &amp;web</translation>
    </message>
    <message>
        <source>&amp;About Vantoro</source>
        <translation>Acerca &amp;de Vantoro</translation>
    </message>
    <message>
        <source>&amp;Close Window</source>
        <translation>&amp;Cerrar la ventana</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Salir</translation>
    </message>
</context>
<context>
    <name>AppSandboxFileAccess</name>
    <message>
        <source>Allow Access</source>
        <translation>Permitir el acceso</translation>
    </message>
    <message>
        <source>%1 needs to access this path to continue. Click Allow to continue.</source>
        <translation>%1 necesita acceder a esta ubicación para continuar. Pulse «Permitir».</translation>
    </message>
    <message>
        <source>Allow</source>
        <translation>Permitir</translation>
    </message>
</context>
<context>
    <name>ArchiveTexts</name>
    <message>
        <source>encrypted, names too</source>
        <translation>cifrado, nombres incluidos</translation>
    </message>
    <message>
        <source>encrypted</source>
        <translation>cifrado</translation>
    </message>
    <message numerus="yes">
        <source>%Ln entries</source>
        <translation>
            <numerusform>%Ln elemento</numerusform>
            <numerusform>%Ln elementos</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln files</source>
        <translation>
            <numerusform>%Ln archivo</numerusform>
            <numerusform>%Ln archivos</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln folders</source>
        <translation>
            <numerusform>%Ln carpeta</numerusform>
            <numerusform>%Ln carpetas</numerusform>
        </translation>
    </message>
    <message>
        <source>%1, %2 packed</source>
        <translation>%1, %2 comprimidos</translation>
    </message>
    <message>
        <source>names in %1</source>
        <translation>nombres en %1</translation>
    </message>
    <message numerus="yes">
        <source>%Ln volumes</source>
        <translation>
            <numerusform>%Ln volumen</numerusform>
            <numerusform>%Ln volúmenes</numerusform>
        </translation>
    </message>
    <message>
        <source>damaged: %1</source>
        <translation>dañado: %1</translation>
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
        <translation>Europeo occidental (ISO Latin 1)</translation>
    </message>
    <message>
        <source>Western (Windows 1252)</source>
        <translation>Europeo occidental (Windows 1252)</translation>
    </message>
    <message>
        <source>Western (DOS 437)</source>
        <translation>Europeo occidental (DOS 437)</translation>
    </message>
    <message>
        <source>Western (DOS 850)</source>
        <translation>Europeo occidental (DOS 850)</translation>
    </message>
    <message>
        <source>Western (Mac OS Roman)</source>
        <translation>Europeo occidental (Mac OS Roman)</translation>
    </message>
    <message>
        <source>Western (ISO Latin 9)</source>
        <translation>Europeo occidental (ISO Latin 9)</translation>
    </message>
    <message>
        <source>Japanese (Shift JIS)</source>
        <translation>Japonés (Shift JIS)</translation>
    </message>
    <message>
        <source>Japanese (EUC)</source>
        <translation>Japonés (EUC)</translation>
    </message>
    <message>
        <source>Japanese (ISO 2022-JP)</source>
        <translation>Japonés (ISO 2022-JP)</translation>
    </message>
    <message>
        <source>Chinese, simplified (GBK)</source>
        <translation>Chino simplificado (GBK)</translation>
    </message>
    <message>
        <source>Chinese, simplified (GB 18030)</source>
        <translation>Chino simplificado (GB 18030)</translation>
    </message>
    <message>
        <source>Chinese, traditional (Big 5)</source>
        <translation>Chino tradicional (Big 5)</translation>
    </message>
    <message>
        <source>Korean (EUC, Windows 949)</source>
        <translation>Coreano (EUC, Windows 949)</translation>
    </message>
    <message>
        <source>Cyrillic (Windows 1251)</source>
        <translation>Cirílico (Windows 1251)</translation>
    </message>
    <message>
        <source>Cyrillic (DOS 866)</source>
        <translation>Cirílico (DOS 866)</translation>
    </message>
    <message>
        <source>Cyrillic (KOI8-R)</source>
        <translation>Cirílico (KOI8-R)</translation>
    </message>
    <message>
        <source>Cyrillic (KOI8-U)</source>
        <translation>Cirílico (KOI8-U)</translation>
    </message>
    <message>
        <source>Cyrillic (ISO 8859-5)</source>
        <translation>Cirílico (ISO 8859-5)</translation>
    </message>
    <message>
        <source>Cyrillic (Mac OS)</source>
        <translation>Cirílico (Mac OS)</translation>
    </message>
    <message>
        <source>Central European (Windows 1250)</source>
        <translation>Centroeuropeo (Windows 1250)</translation>
    </message>
    <message>
        <source>Central European (DOS 852)</source>
        <translation>Centroeuropeo (DOS 852)</translation>
    </message>
    <message>
        <source>Central European (ISO Latin 2)</source>
        <translation>Centroeuropeo (ISO Latin 2)</translation>
    </message>
    <message>
        <source>Central European (Mac OS)</source>
        <translation>Centroeuropeo (Mac OS)</translation>
    </message>
    <message>
        <source>Greek (Windows 1253)</source>
        <translation>Griego (Windows 1253)</translation>
    </message>
    <message>
        <source>Greek (ISO 8859-7)</source>
        <translation>Griego (ISO 8859-7)</translation>
    </message>
    <message>
        <source>Greek (DOS 737)</source>
        <translation>Griego (DOS 737)</translation>
    </message>
    <message>
        <source>Turkish (Windows 1254)</source>
        <translation>Turco (Windows 1254)</translation>
    </message>
    <message>
        <source>Turkish (ISO Latin 5)</source>
        <translation>Turco (ISO Latin 5)</translation>
    </message>
    <message>
        <source>Turkish (DOS 857)</source>
        <translation>Turco (DOS 857)</translation>
    </message>
    <message>
        <source>Hebrew (Windows 1255)</source>
        <translation>Hebreo (Windows 1255)</translation>
    </message>
    <message>
        <source>Hebrew (ISO 8859-8)</source>
        <translation>Hebreo (ISO 8859-8)</translation>
    </message>
    <message>
        <source>Hebrew (DOS 862)</source>
        <translation>Hebreo (DOS 862)</translation>
    </message>
    <message>
        <source>Arabic (Windows 1256)</source>
        <translation>Árabe (Windows 1256)</translation>
    </message>
    <message>
        <source>Arabic (ISO 8859-6)</source>
        <translation>Árabe (ISO 8859-6)</translation>
    </message>
    <message>
        <source>Arabic (DOS 864)</source>
        <translation>Árabe (DOS 864)</translation>
    </message>
    <message>
        <source>Baltic (Windows 1257)</source>
        <translation>Báltico (Windows 1257)</translation>
    </message>
    <message>
        <source>Baltic (ISO Latin 4)</source>
        <translation>Báltico (ISO Latin 4)</translation>
    </message>
    <message>
        <source>Baltic (ISO Latin 7)</source>
        <translation>Báltico (ISO Latin 7)</translation>
    </message>
    <message>
        <source>Baltic (DOS 775)</source>
        <translation>Báltico (DOS 775)</translation>
    </message>
    <message>
        <source>Vietnamese (Windows 1258)</source>
        <translation>Vietnamita (Windows 1258)</translation>
    </message>
    <message>
        <source>Thai (Windows 874)</source>
        <translation>Tailandés (Windows 874)</translation>
    </message>
    <message>
        <source>South European (ISO Latin 3)</source>
        <translation>Sureuropeo (ISO Latin 3)</translation>
    </message>
    <message>
        <source>Nordic (ISO Latin 6)</source>
        <translation>Nórdico (ISO Latin 6)</translation>
    </message>
    <message>
        <source>Celtic (ISO Latin 8)</source>
        <translation>Celta (ISO Latin 8)</translation>
    </message>
    <message>
        <source>Nordic (DOS 865)</source>
        <translation>Nórdico (DOS 865)</translation>
    </message>
    <message>
        <source>Portuguese (DOS 860)</source>
        <translation>Portugués (DOS 860)</translation>
    </message>
    <message>
        <source>Canadian French (DOS 863)</source>
        <translation>Francés canadiense (DOS 863)</translation>
    </message>
    <message>
        <source>Icelandic (DOS 861)</source>
        <translation>Islandés (DOS 861)</translation>
    </message>
</context>
<context>
    <name>CommandLine</name>
    <message>
        <source>there is no option &quot;%1&quot;</source>
        <translation>no existe la opción «%1»</translation>
    </message>
    <message>
        <source>&quot;--extract-to&quot; needs a folder</source>
        <translation>«--extract-to» necesita una carpeta</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a file here</source>
        <translation>«%1» no es un archivo local</translation>
    </message>
    <message>
        <source>no archive is given</source>
        <translation>no se ha indicado ningún archivo comprimido</translation>
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
        <translation>Uso: vantoro [OPCIÓN] [ARCHIVO...]

Abre archivos comprimidos: los extrae o los muestra, según los ajustes.
Sin archivo se muestra la ventana principal.

  --extract-here         extraer cada archivo junto a sí mismo
  --extract-to CARPETA   extraer en CARPETA
  --extract-to-desktop   extraer en la carpeta Escritorio de los ajustes
  --extract-ask          preguntar dónde extraer
  --extract              extraer donde digan los ajustes, o preguntar
  --compress             crear un archivo comprimido con los archivos
  --dbus-service         esperar llamadas en el bus de sesión
  -h, --help             mostrar esta ayuda
  --version              mostrar la versión
  --                     todo lo que sigue es un archivo

Los archivos son rutas o URI file://. vantoro-cli funciona sin pantalla.
</translation>
    </message>
</context>
<context>
    <name>EntryPreviewer</name>
    <message>
        <source>Reading “%1”…</source>
        <translation>Leyendo «%1»…</translation>
    </message>
</context>
<context>
    <name>ExtractionSummary</name>
    <message>
        <source>&quot;%1&quot; was extracted</source>
        <translation>Se ha extraído «%1»</translation>
    </message>
    <message numerus="yes">
        <source>%n archive(s) were extracted</source>
        <translation>
            <numerusform>Se ha extraído %n archivo comprimido</numerusform>
            <numerusform>Se han extraído %n archivos comprimidos</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; could not be extracted</source>
        <translation>No se ha podido extraer «%1»</translation>
    </message>
    <message>
        <source>%1 of %2 archives could not be extracted</source>
        <translation>No se han podido extraer %1 de %2 archivos comprimidos</translation>
    </message>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>y %n más</numerusform>
            <numerusform>y %n más</numerusform>
        </translation>
    </message>
    <message>
        <source>&quot;%1&quot; in %2</source>
        <translation>«%1» en %2</translation>
    </message>
    <message numerus="yes">
        <source>%n entry(s) were damaged or refused</source>
        <translation>
            <numerusform>%n elemento estaba dañado o se ha rechazado</numerusform>
            <numerusform>%n elementos estaban dañados o se han rechazado</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>FilePreview</name>
    <message numerus="yes">
        <source>%n item(s)</source>
        <translation>
            <numerusform>%n elemento</numerusform>
            <numerusform>%n elementos</numerusform>
        </translation>
    </message>
    <message>
        <source>Cannot be read</source>
        <translation>No se puede leer</translation>
    </message>
</context>
<context>
    <name>Formats</name>
    <message>
        <source>RPM package</source>
        <translation>Paquete RPM</translation>
    </message>
    <message>
        <source>tar archive</source>
        <translation>Archivo tar</translation>
    </message>
    <message>
        <source>RAR archive</source>
        <translation>Archivo RAR</translation>
    </message>
    <message>
        <source>ARJ archive</source>
        <translation>Archivo ARJ</translation>
    </message>
    <message>
        <source>cpio archive</source>
        <translation>Archivo cpio</translation>
    </message>
    <message>
        <source>ISO 9660 disc image</source>
        <translation>Imagen de disco ISO 9660</translation>
    </message>
    <message>
        <source>gzip file</source>
        <translation>Archivo gzip</translation>
    </message>
    <message>
        <source>bzip2 file</source>
        <translation>Archivo bzip2</translation>
    </message>
    <message>
        <source>xz file</source>
        <translation>Archivo xz</translation>
    </message>
    <message>
        <source>Zstandard file</source>
        <translation>Archivo Zstandard</translation>
    </message>
    <message>
        <source>LZ4 file</source>
        <translation>Archivo LZ4</translation>
    </message>
    <message>
        <source>lzip file</source>
        <translation>Archivo lzip</translation>
    </message>
    <message>
        <source>lzop file</source>
        <translation>Archivo lzop</translation>
    </message>
    <message>
        <source>Unix compress file</source>
        <translation>Archivo compress de Unix</translation>
    </message>
    <message>
        <source>LZMA file</source>
        <translation>Archivo LZMA</translation>
    </message>
    <message>
        <source>zlib stream</source>
        <translation>Flujo zlib</translation>
    </message>
    <message>
        <source>Brotli file</source>
        <translation>Archivo Brotli</translation>
    </message>
    <message>
        <source>Zip archive</source>
        <translation>Archivo zip</translation>
    </message>
    <message>
        <source>LHA archive</source>
        <translation>Archivo LHA</translation>
    </message>
    <message>
        <source>PMarc archive</source>
        <translation>Archivo PMarc</translation>
    </message>
    <message>
        <source>Unix archive or Debian package</source>
        <translation>Archivo de Unix o paquete de Debian</translation>
    </message>
    <message>
        <source>xar archive</source>
        <translation>Archivo xar</translation>
    </message>
    <message>
        <source>Web archive</source>
        <translation>Archivo web</translation>
    </message>
    <message>
        <source>NSIS installer</source>
        <translation>Instalador NSIS</translation>
    </message>
    <message>
        <source>7z archive</source>
        <translation>Archivo 7z</translation>
    </message>
    <message>
        <source>Cabinet</source>
        <translation>Archivo Cabinet</translation>
    </message>
    <message>
        <source>Windows installer package</source>
        <translation>Paquete de instalación de Windows</translation>
    </message>
    <message>
        <source>Compound file</source>
        <translation>Archivo compuesto</translation>
    </message>
    <message>
        <source>Compiled help</source>
        <translation>Ayuda compilada</translation>
    </message>
    <message>
        <source>Compiled help 2</source>
        <translation>Ayuda compilada 2</translation>
    </message>
    <message>
        <source>Windows image</source>
        <translation>Imagen de Windows</translation>
    </message>
    <message>
        <source>UDF disc image</source>
        <translation>Imagen de disco UDF</translation>
    </message>
    <message>
        <source>SquashFS image</source>
        <translation>Imagen SquashFS</translation>
    </message>
    <message>
        <source>CramFS image</source>
        <translation>Imagen CramFS</translation>
    </message>
    <message>
        <source>macOS disk image</source>
        <translation>Imagen de disco de macOS</translation>
    </message>
    <message>
        <source>Virtual disk</source>
        <translation>Disco virtual</translation>
    </message>
    <message>
        <source>NTFS image</source>
        <translation>Imagen NTFS</translation>
    </message>
    <message>
        <source>APFS image</source>
        <translation>Imagen APFS</translation>
    </message>
    <message>
        <source>HFS+ image</source>
        <translation>Imagen HFS+</translation>
    </message>
    <message>
        <source>FAT image</source>
        <translation>Imagen FAT</translation>
    </message>
    <message>
        <source>ext file system image</source>
        <translation>Imagen de sistema de archivos ext</translation>
    </message>
    <message>
        <source>Disk image</source>
        <translation>Imagen de disco</translation>
    </message>
</context>
<context>
    <name>InformationWindow</name>
    <message>
        <source>Windows and the desktop</source>
        <translation>Ventanas y escritorio</translation>
    </message>
    <message>
        <source>Reads many formats, writes 7z</source>
        <translation>Lee muchos formatos, escribe 7z</translation>
    </message>
    <message>
        <source>Reads and writes further formats</source>
        <translation>Lee y escribe otros formatos</translation>
    </message>
    <message>
        <source>LHA methods</source>
        <translation>Métodos LHA</translation>
    </message>
    <message>
        <source>Deflate, whole blocks</source>
        <translation>Deflate, bloques completos</translation>
    </message>
    <message>
        <source>Deflate, streams</source>
        <translation>Deflate, flujos</translation>
    </message>
    <message>
        <source>Deflate, writing</source>
        <translation>Deflate, escritura</translation>
    </message>
    <message>
        <source>xz and lzma</source>
        <translation>xz y lzma</translation>
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
        <translation>Archivos WAV dentro de zip</translation>
    </message>
    <message>
        <source>Ciphers and checksums</source>
        <translation>Cifrados y sumas de comprobación</translation>
    </message>
    <message>
        <source>Text encodings</source>
        <translation>Codificaciones de texto</translation>
    </message>
    <message>
        <source>Finding an encoding out</source>
        <translation>Detección de la codificación</translation>
    </message>
    <message>
        <source>Confines the decoders</source>
        <translation>Confina los decodificadores</translation>
    </message>
    <message>
        <source>Strength of passwords</source>
        <translation>Seguridad de las contraseñas</translation>
    </message>
</context>
<context>
    <name>KXUnarchiveWrapper</name>
    <message>
        <source>“%1” is too large to be shown: it has %2, and at most %3 are read for a preview.</source>
        <translation>«%1» es demasiado grande para mostrarlo: tiene %2 y la vista previa lee como máximo %3.</translation>
    </message>
    <message>
        <source>more than that</source>
        <translation>más que eso</translation>
    </message>
    <message>
        <source>“%1” is encrypted, and the password does not fit.</source>
        <translation>«%1» está cifrado y la contraseña no coincide.</translation>
    </message>
    <message>
        <source>“%1” cannot be read: %2.</source>
        <translation>No se puede leer «%1»: %2.</translation>
    </message>
</context>
<context>
    <name>MainPages</name>
    <message>
        <source>Compress</source>
        <translation>Comprimir</translation>
    </message>
    <message>
        <source>Extract</source>
        <translation>Extraer</translation>
    </message>
</context>
<context>
    <name>PackKinds</name>
    <message>
        <source>Zip archive</source>
        <translation>Archivo zip</translation>
    </message>
    <message>
        <source>7-Zip archive</source>
        <translation>Archivo 7-Zip</translation>
    </message>
    <message>
        <source>Gzip-compressed tar</source>
        <translation>Tar comprimido con gzip</translation>
    </message>
    <message>
        <source>XZ-compressed tar</source>
        <translation>Tar comprimido con xz</translation>
    </message>
    <message>
        <source>Zstandard-compressed tar</source>
        <translation>Tar comprimido con Zstandard</translation>
    </message>
    <message>
        <source>Bzip2-compressed tar</source>
        <translation>Tar comprimido con bzip2</translation>
    </message>
    <message>
        <source>Tar archive</source>
        <translation>Archivo tar</translation>
    </message>
    <message>
        <source>LZ4-compressed tar</source>
        <translation>Tar comprimido con LZ4</translation>
    </message>
    <message>
        <source>Cpio archive</source>
        <translation>Archivo cpio</translation>
    </message>
    <message>
        <source>CD image (ISO 9660)</source>
        <translation>Imagen de CD (ISO 9660)</translation>
    </message>
    <message>
        <source>Xar archive</source>
        <translation>Archivo xar</translation>
    </message>
    <message>
        <source>Ar archive</source>
        <translation>Archivo ar</translation>
    </message>
    <message>
        <source>Java archive</source>
        <translation>Archivo Java</translation>
    </message>
    <message>
        <source>Comic book archive</source>
        <translation>Archivo de cómic</translation>
    </message>
    <message>
        <source>Gzip-compressed file</source>
        <translation>Archivo comprimido con gzip</translation>
    </message>
    <message>
        <source>XZ-compressed file</source>
        <translation>Archivo comprimido con xz</translation>
    </message>
    <message>
        <source>Zstandard-compressed file</source>
        <translation>Archivo comprimido con Zstandard</translation>
    </message>
    <message>
        <source>Bzip2-compressed file</source>
        <translation>Archivo comprimido con bzip2</translation>
    </message>
    <message>
        <source>LZ4-compressed file</source>
        <translation>Archivo comprimido con LZ4</translation>
    </message>
</context>
<context>
    <name>PasswordGate</name>
    <message>
        <source>Checking the password…</source>
        <translation>Comprobando la contraseña…</translation>
    </message>
</context>
<context>
    <name>PasswordStrength</name>
    <message>
        <source>Weak</source>
        <translation>Débil</translation>
    </message>
    <message>
        <source>Fair</source>
        <translation>Aceptable</translation>
    </message>
    <message>
        <source>Good</source>
        <translation>Buena</translation>
    </message>
    <message>
        <source>Strong</source>
        <translation>Fuerte</translation>
    </message>
</context>
<context>
    <name>PreviewContent</name>
    <message>
        <source>This picture cannot be shown: it is damaged, or too large to decode.</source>
        <translation>No se puede mostrar esta imagen: está dañada o es demasiado grande.</translation>
    </message>
    <message>
        <source>%1 × %2 pixels</source>
        <translation>%1 × %2 píxeles</translation>
    </message>
    <message>
        <source>The beginning of %1</source>
        <translation>El principio de %1</translation>
    </message>
    <message>
        <source>This file is empty.</source>
        <translation>Este archivo está vacío.</translation>
    </message>
    <message>
        <source>There is no preview for this kind of file.</source>
        <translation>Sin vista previa para este tipo.</translation>
    </message>
</context>
<context>
    <name>ProgressPanel</name>
    <message>
        <source>%1 of %2</source>
        <translation>%1 de %2</translation>
    </message>
    <message>
        <source>%1 of %2 files</source>
        <translation>%1 de %2 archivos</translation>
    </message>
    <message>
        <source>A few seconds left</source>
        <translation>Quedan unos segundos</translation>
    </message>
    <message numerus="yes">
        <source>About %n seconds left</source>
        <translation>
            <numerusform>Queda aproximadamente %n segundo</numerusform>
            <numerusform>Quedan aproximadamente %n segundos</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>About %n minute(s) left</source>
        <translation>
            <numerusform>Queda aproximadamente %n minuto</numerusform>
            <numerusform>Quedan aproximadamente %n minutos</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>About %n hour(s) left</source>
        <translation>
            <numerusform>Queda aproximadamente %n hora</numerusform>
            <numerusform>Quedan aproximadamente %n horas</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>QFileDialog</name>
    <message>
        <source>Allowed files (%1)</source>
        <translation>Archivos permitidos (%1)</translation>
    </message>
</context>
<context>
    <name>XADException</name>
    <message>
        <source>an internal error occurred</source>
        <translation>se ha producido un error interno</translation>
    </message>
    <message>
        <source>stopped by the user</source>
        <translation>detenido por el usuario</translation>
    </message>
    <message>
        <source>reading the archive failed</source>
        <translation>no se ha podido leer el archivo comprimido</translation>
    </message>
    <message>
        <source>this is not an archive of a known format</source>
        <translation>no es un archivo comprimido de un formato conocido</translation>
    </message>
    <message>
        <source>the archive ends too early</source>
        <translation>el archivo comprimido termina antes de tiempo</translation>
    </message>
    <message>
        <source>the archive is damaged</source>
        <translation>el archivo comprimido está dañado</translation>
    </message>
    <message>
        <source>the data are damaged (wrong checksum)</source>
        <translation>los datos están dañados (suma de comprobación incorrecta)</translation>
    </message>
    <message>
        <source>the data are damaged (wrong size)</source>
        <translation>los datos están dañados (tamaño incorrecto)</translation>
    </message>
    <message>
        <source>the compression method is not supported</source>
        <translation>el método de compresión no es compatible</translation>
    </message>
    <message>
        <source>the kind of encryption is not supported</source>
        <translation>el tipo de cifrado no es compatible</translation>
    </message>
    <message>
        <source>the archive uses a feature that is not supported</source>
        <translation>el archivo comprimido usa una función no compatible</translation>
    </message>
    <message>
        <source>a password is needed</source>
        <translation>se necesita una contraseña</translation>
    </message>
    <message>
        <source>the password is wrong, or the data are damaged</source>
        <translation>la contraseña es incorrecta o los datos están dañados</translation>
    </message>
    <message>
        <source>a part of the archive is missing</source>
        <translation>falta una parte del archivo comprimido</translation>
    </message>
    <message>
        <source>the archive asks for more than is allowed</source>
        <translation>el archivo comprimido pide más de lo permitido</translation>
    </message>
    <message>
        <source>there is not enough memory</source>
        <translation>no hay suficiente memoria</translation>
    </message>
    <message>
        <source>the reader for this format stopped unexpectedly</source>
        <translation>el lector de este formato se ha detenido inesperadamente</translation>
    </message>
    <message>
        <source>the reader for this format does not get on</source>
        <translation>el lector de este formato no avanza</translation>
    </message>
    <message>
        <source>entries of the archive overlap, as in a forged archive</source>
        <translation>hay elementos que se solapan, como en un archivo falsificado</translation>
    </message>
    <message>
        <source>the name is not safe</source>
        <translation>el nombre no es seguro</translation>
    </message>
    <message>
        <source>the link leads out of the destination folder</source>
        <translation>el enlace lleva fuera de la carpeta de destino</translation>
    </message>
    <message>
        <source>devices, pipes and sockets are not created</source>
        <translation>no se crean dispositivos, tuberías ni sockets</translation>
    </message>
    <message>
        <source>the entry was refused</source>
        <translation>el elemento se ha rechazado</translation>
    </message>
    <message>
        <source>the name is already taken</source>
        <translation>el nombre ya existe</translation>
    </message>
    <message>
        <source>the disk is full</source>
        <translation>el disco está lleno</translation>
    </message>
    <message>
        <source>writing failed</source>
        <translation>la escritura ha fallado</translation>
    </message>
    <message>
        <source>the destination folder cannot be written to</source>
        <translation>no se puede escribir en la carpeta de destino</translation>
    </message>
    <message>
        <source>the destination folder has vanished</source>
        <translation>la carpeta de destino ha desaparecido</translation>
    </message>
    <message>
        <source>the archive would grow out of proportion</source>
        <translation>el archivo comprimido crecería de forma desproporcionada</translation>
    </message>
    <message>
        <source>the encoding of the file names is not known</source>
        <translation>se desconoce la codificación de los nombres de archivo</translation>
    </message>
    <message>
        <source>the file cannot be read</source>
        <translation>no se puede leer el archivo</translation>
    </message>
    <message>
        <source>archives of this kind cannot be created</source>
        <translation>no se pueden crear archivos comprimidos de este tipo</translation>
    </message>
    <message>
        <source>something unknown follows the end of the compressed data</source>
        <translation>tras el final de los datos comprimidos hay algo desconocido</translation>
    </message>
    <message>
        <source>the program was updated while it runs; please start it again</source>
        <translation>el programa se actualizó mientras se ejecutaba; inícielo de nuevo</translation>
    </message>
    <message>
        <source>an unknown error occurred</source>
        <translation>se ha producido un error desconocido</translation>
    </message>
</context>
<context>
    <name>vantoro::AppCommands</name>
    <message>
        <source>Extract page</source>
        <translation>Página Extraer</translation>
    </message>
    <message>
        <source>Compress page</source>
        <translation>Página Comprimir</translation>
    </message>
    <message>
        <source>Next page</source>
        <translation>Página siguiente</translation>
    </message>
    <message>
        <source>Preview the chosen entry</source>
        <translation>Vista previa del elemento elegido</translation>
    </message>
    <message>
        <source>Filter entries</source>
        <translation>Filtrar elementos</translation>
    </message>
    <message>
        <source>Choose everything</source>
        <translation>Seleccionar todo</translation>
    </message>
    <message>
        <source>Open or close a folder of the archive</source>
        <translation>Abrir o cerrar una carpeta del archivo</translation>
    </message>
    <message>
        <source>Stop what runs, close a question or a preview</source>
        <translation>Detener lo que esté en curso, cerrar una pregunta o una vista previa</translation>
    </message>
</context>
<context>
    <name>vantoro::AppDelegate</name>
    <message>
        <source>Select archives to extract</source>
        <translation>Seleccione los archivos que desea extraer</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>Seleccionar</translation>
    </message>
    <message>
        <source>Please select the extracted destination</source>
        <translation>Seleccione el destino de la extracción</translation>
    </message>
    <message>
        <source>Extract</source>
        <translation>Extraer</translation>
    </message>
</context>
<context>
    <name>vantoro::ArchiveTreeModel</name>
    <message>
        <source>Name</source>
        <translation>Nombre</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>Tamaño</translation>
    </message>
    <message>
        <source>Modified</source>
        <translation>Modificado</translation>
    </message>
</context>
<context>
    <name>vantoro::ChosenExtraction</name>
    <message>
        <source>Please select the destination</source>
        <translation>Seleccione el destino</translation>
    </message>
    <message>
        <source>Extract</source>
        <translation>Extraer</translation>
    </message>
    <message>
        <source>Extracting…</source>
        <translation>Extrayendo…</translation>
    </message>
</context>
<context>
    <name>vantoro::CompressWindow</name>
    <message>
        <source>Start</source>
        <translation>Empezar</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Compression Options</source>
        <translation>Opciones de compresión</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Formato</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Ninguna</translation>
    </message>
    <message>
        <source>Type it once more</source>
        <translation>Escríbala otra vez</translation>
    </message>
    <message>
        <source>Repeat the password</source>
        <translation>Repita la contraseña</translation>
    </message>
    <message>
        <source>Format:</source>
        <translation>Formato:</translation>
    </message>
    <message>
        <source>Password:</source>
        <translation>Contraseña:</translation>
    </message>
    <message>
        <source>Repeat:</source>
        <translation>Repetir:</translation>
    </message>
    <message>
        <source>The two passwords differ.</source>
        <translation>Las dos contraseñas no coinciden.</translation>
    </message>
</context>
<context>
    <name>vantoro::ContentsPresenter</name>
    <message>
        <source>Opening “%1”…</source>
        <translation>Abriendo «%1»…</translation>
    </message>
    <message numerus="yes">
        <source>%Ln entries extracted</source>
        <translation>
            <numerusform>%Ln elemento extraído</numerusform>
            <numerusform>%Ln elementos extraídos</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1, and %Ln more failed</source>
        <translation>
            <numerusform>%1, y %Ln error más</numerusform>
            <numerusform>%1, y %Ln errores más</numerusform>
        </translation>
    </message>
    <message>
        <source>The list is incomplete: %1</source>
        <translation>La lista está incompleta: %1</translation>
    </message>
</context>
<context>
    <name>vantoro::EncodingPanel</name>
    <message>
        <source>Stop</source>
        <translation>Detener</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Continuar</translation>
    </message>
    <message>
        <source>The file names in &quot;%1&quot; do not say how they are written. Choose the encoding in which this name reads right:</source>
        <translation>Los nombres de archivo de «%1» no indican su codificación. Elija aquella con la que este nombre se lea bien:</translation>
    </message>
    <message>
        <source>This name would read: %1</source>
        <translation>Este nombre se leería: %1</translation>
    </message>
</context>
<context>
    <name>vantoro::ExtractionReporter</name>
    <message>
        <source>Show in Folder</source>
        <translation>Mostrar en la carpeta</translation>
    </message>
    <message>
        <source>Show Report</source>
        <translation>Mostrar el informe</translation>
    </message>
</context>
<context>
    <name>vantoro::HDAlert</name>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
</context>
<context>
    <name>vantoro::HowToUseWindow</name>
    <message>
        <source>How to Use</source>
        <translation>Cómo se usa</translation>
    </message>
    <message>
        <source>Extract</source>
        <translation>Extraer</translation>
    </message>
    <message>
        <source>Drop archives on the window, or open them in the file manager. They come out one after another; whatever must be asked is asked in the archive&apos;s own row.</source>
        <translation>Suelte archivos en la ventana o ábralos en el gestor de archivos. Se extraen uno tras otro; lo que haya que preguntar aparece en la fila del propio archivo.</translation>
    </message>
    <message>
        <source>Look inside</source>
        <translation>Ver el contenido</translation>
    </message>
    <message>
        <source>With &quot;Look inside before extracting&quot; in the settings, an opened archive shows what it holds. Press Space to preview an entry, and extract all of it or only what you choose.</source>
        <translation>Con «Ver el contenido antes de extraer» en los ajustes, un archivo abierto muestra lo que contiene. Pulse Espacio para previsualizar un elemento y extraiga todo o solo lo que elija.</translation>
    </message>
    <message>
        <source>Compress</source>
        <translation>Comprimir</translation>
    </message>
    <message>
        <source>Drop files and folders on the Compress page, choose a kind and, if you like, a password, and say where the archive is to be written.</source>
        <translation>Suelte archivos y carpetas en la página Comprimir, elija un tipo y, si quiere, una contraseña, e indique dónde se guardará el archivo.</translation>
    </message>
    <message>
        <source>From the file manager</source>
        <translation>Desde el gestor de archivos</translation>
    </message>
    <message>
        <source>The menu of an archive offers to extract it there, to the Desktop, or to a folder of your choice.</source>
        <translation>El menú de un archivo permite extraerlo ahí mismo, en el escritorio o en la carpeta que elija.</translation>
    </message>
    <message>
        <source>Always at hand</source>
        <translation>Siempre a mano</translation>
    </message>
    <message>
        <source>Vantoro goes on running when its windows are closed. Its icon in the tray brings them back, and Quit ends it.</source>
        <translation>Vantoro sigue en marcha al cerrar sus ventanas. Su icono en la bandeja las recupera, y Salir lo termina.</translation>
    </message>
</context>
<context>
    <name>vantoro::InformationWindow</name>
    <message>
        <source>About Vantoro</source>
        <translation>Acerca de Vantoro</translation>
    </message>
    <message>
        <source>&amp;Formats</source>
        <translation>&amp;Formatos</translation>
    </message>
    <message>
        <source>&amp;Libraries</source>
        <translation>&amp;Bibliotecas</translation>
    </message>
    <message>
        <source>Vantoro</source>
        <translation>Vantoro</translation>
    </message>
    <message>
        <source>Version %1, with Qt %2</source>
        <translation>Versión %1, con Qt %2</translation>
    </message>
    <message>
        <source>Free software under the GNU General Public License, version 3 or later.</source>
        <translation>Software libre bajo la Licencia Pública General de GNU, versión 3 o posterior.</translation>
    </message>
    <message>
        <source>Find a format or an extension</source>
        <translation>Buscar un formato o una extensión</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Formato</translation>
    </message>
    <message>
        <source>Extensions</source>
        <translation>Extensiones</translation>
    </message>
    <message>
        <source>Formats that can be read</source>
        <translation>Formatos que se pueden leer</translation>
    </message>
    <message>
        <source>Library</source>
        <translation>Biblioteca</translation>
    </message>
    <message>
        <source>Use</source>
        <translation>Uso</translation>
    </message>
    <message>
        <source>Licence</source>
        <translation>Licencia</translation>
    </message>
    <message>
        <source>Libraries in use</source>
        <translation>Bibliotecas utilizadas</translation>
    </message>
</context>
<context>
    <name>vantoro::KXArchiveContentsViewController</name>
    <message>
        <source>Extract</source>
        <translation>Extraer</translation>
    </message>
    <message>
        <source>Please select the archive</source>
        <translation>Seleccione el archivo comprimido</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>Seleccionar</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Vista previa</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Cerrar</translation>
    </message>
    <message>
        <source>Filter by name</source>
        <translation>Filtrar por nombre</translation>
    </message>
    <message>
        <source>Open…</source>
        <translation>Abrir…</translation>
    </message>
    <message>
        <source>Choose another archive</source>
        <translation>Elegir otro archivo</translation>
    </message>
    <message>
        <source>Extract what is selected, or everything (Ctrl+E)</source>
        <translation>Extraer lo seleccionado o todo (Ctrl+E)</translation>
    </message>
    <message>
        <source>Look at the selected file (Space)</source>
        <translation>Ver el archivo seleccionado (Espacio)</translation>
    </message>
    <message>
        <source>Close the archive</source>
        <translation>Cerrar el archivo</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Ajustes</translation>
    </message>
    <message>
        <source>Close Folder</source>
        <translation>Cerrar carpeta</translation>
    </message>
    <message>
        <source>Open Folder</source>
        <translation>Abrir carpeta</translation>
    </message>
    <message>
        <source>Extract All</source>
        <translation>Extraer todo</translation>
    </message>
    <message>
        <source>Contents of %1</source>
        <translation>Contenido de %1</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>Información</translation>
    </message>
    <message>
        <source>DO NOT support quicklook this archive, please close &apos;Preview an archive&apos;s file list without extraction&apos; in Preferences Panel to extract directly</source>
        <translation>No se puede mostrar el contenido de este archivo. Desactive «Ver el contenido antes de extraer» en los ajustes para extraerlo directamente.</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>Wrong Password!</source>
        <translation>¡Contraseña incorrecta!</translation>
    </message>
    <message>
        <source>This archive is empty</source>
        <translation>Este archivo está vacío</translation>
    </message>
    <message>
        <source>Extract…</source>
        <translation>Extraer…</translation>
    </message>
    <message>
        <source>Extract All…</source>
        <translation>Extraer todo…</translation>
    </message>
    <message>
        <source>Extract to &quot;%1&quot;</source>
        <translation>Extraer en «%1»</translation>
    </message>
    <message>
        <source>Extract All to &quot;%1&quot;</source>
        <translation>Extraer todo en «%1»</translation>
    </message>
</context>
<context>
    <name>vantoro::KXArchiveManageController</name>
    <message>
        <source>DO NOT support unarchive this archive due to the format error.</source>
        <translation>Este archivo no se puede extraer debido a un error de formato.</translation>
    </message>
    <message>
        <source>ERROR happened while reading the contents of the file &quot;%1&quot;: %2</source>
        <translation>Se ha producido un error al leer el contenido del archivo «%1»: %2</translation>
    </message>
    <message>
        <source>ERROR happened while extracting the contents of the file &quot;%1&quot;: %2</source>
        <translation>Se ha producido un error al extraer el contenido del archivo «%1»: %2</translation>
    </message>
    <message>
        <source>the result could not be moved into the folder &quot;%1&quot;</source>
        <translation>no se ha podido mover el resultado a la carpeta «%1»</translation>
    </message>
    <message>
        <source>The archive could not be moved to the Trash.</source>
        <translation>No se ha podido mover el archivo a la papelera.</translation>
    </message>
    <message>
        <source>DO NOT extract the files &quot;%1&quot; from the archive &quot;%2&quot;:
%3</source>
        <translation>No se han podido extraer los archivos «%1» del archivo comprimido «%2»:
%3</translation>
    </message>
    <message>
        <source>DO NOT extract the files &quot;%1&quot; from archive &quot;%2&quot;: %3</source>
        <translation>No se han podido extraer los archivos «%1» del archivo comprimido «%2»: %3</translation>
    </message>
    <message>
        <source>The archive &quot;%1&quot; of %2 would unpack to %3. Archives that are made to fill a disk look like this.</source>
        <translation>El archivo «%1» de %2 ocuparía %3 al extraerlo. Así son los archivos hechos para llenar un disco.</translation>
    </message>
    <message>
        <source>The contents of the archive &quot;%1&quot; need %2, but only %3 are free in the destination.</source>
        <translation>El contenido del archivo «%1» necesita %2, pero en el destino solo hay %3 libres.</translation>
    </message>
    <message>
        <source>The archive &quot;%1&quot; of %2 holds %3 entries.</source>
        <translation>El archivo «%1» de %2 contiene %3 elementos.</translation>
    </message>
    <message>
        <source>The archive &quot;%1&quot; could not be read to its end: %2</source>
        <translation>No se ha podido leer hasta el final el archivo «%1»: %2</translation>
    </message>
</context>
<context>
    <name>vantoro::KXArchiveTaskView</name>
    <message>
        <source>%1 (+%2 more)</source>
        <translation>%1 (+%2 más)</translation>
    </message>
    <message>
        <source>Preparing to extract &quot;%1&quot;</source>
        <translation>Preparando la extracción de «%1»</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Detener</translation>
    </message>
    <message>
        <source>Extract to Desktop</source>
        <translation>Extraer en el escritorio</translation>
    </message>
    <message>
        <source>Choose Folder…</source>
        <translation>Elegir carpeta…</translation>
    </message>
    <message>
        <source>You may not write to the folder &quot;%1&quot;. Where should &quot;%2&quot; be extracted to?</source>
        <translation>No tiene permiso para escribir en la carpeta «%1». ¿Dónde se debe extraer «%2»?</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Continuar</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>Extracting &quot;%1&quot;</source>
        <translation>Extrayendo «%1»</translation>
    </message>
</context>
<context>
    <name>vantoro::KXDropArchiveView</name>
    <message>
        <source>Drop an archive here</source>
        <translation>Suelte aquí un archivo comprimido</translation>
    </message>
    <message>
        <source>to look inside, preview and extract what you need</source>
        <translation>para ver su contenido y extraer lo que necesite</translation>
    </message>
    <message>
        <source>Choose an Archive…</source>
        <translation>Elegir un archivo…</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>Información</translation>
    </message>
    <message>
        <source>ONLY preview one archive at a time</source>
        <translation>Solo se puede ver un archivo a la vez</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
</context>
<context>
    <name>vantoro::KXDropFilesView</name>
    <message>
        <source>Drop files and folders here to compress them</source>
        <translation>Suelte aquí archivos y carpetas para comprimirlos</translation>
    </message>
    <message>
        <source>or choose them from your folders</source>
        <translation>o elíjalos en sus carpetas</translation>
    </message>
    <message>
        <source>Add Files…</source>
        <translation>Añadir archivos…</translation>
    </message>
</context>
<context>
    <name>vantoro::KXEncodePopButton</name>
    <message>
        <source>Text encoding</source>
        <translation>Codificación del texto</translation>
    </message>
    <message>
        <source>AUTO Dectect</source>
        <translation>Detección automática</translation>
    </message>
    <message>
        <source>Default encoding</source>
        <translation>Codificación predeterminada</translation>
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
        <translation>&amp;Menú</translation>
    </message>
    <message>
        <source>How to use</source>
        <translation>Cómo se usa</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Ajustes</translation>
    </message>
</context>
<context>
    <name>vantoro::KXPackViewController</name>
    <message>
        <source>Compress</source>
        <translation>Comprimir</translation>
    </message>
    <message>
        <source>Please select the files</source>
        <translation>Seleccione los archivos</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>Seleccionar</translation>
    </message>
    <message numerus="yes">
        <source>%n item(s)</source>
        <translation>
            <numerusform>%n elemento</numerusform>
            <numerusform>%n elementos</numerusform>
        </translation>
    </message>
    <message>
        <source>Please select the destination</source>
        <translation>Seleccione el destino</translation>
    </message>
    <message>
        <source>Information</source>
        <translation>Información</translation>
    </message>
    <message>
        <source>Please drag files and folers here!</source>
        <translation>¡Arrastre aquí archivos y carpetas!</translation>
    </message>
    <message>
        <source>Compressing…</source>
        <translation>Comprimiendo…</translation>
    </message>
    <message>
        <source>Add…</source>
        <translation>Añadir…</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Vaciar</translation>
    </message>
    <message>
        <source>Format</source>
        <translation>Formato</translation>
    </message>
    <message>
        <source>Options…</source>
        <translation>Opciones…</translation>
    </message>
    <message>
        <source>&amp;Format</source>
        <translation>&amp;Formato</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Ninguna</translation>
    </message>
    <message>
        <source>&amp;Password</source>
        <translation>&amp;Contraseña</translation>
    </message>
</context>
<context>
    <name>vantoro::KXTableCellView</name>
    <message>
        <source>Preview</source>
        <translation>Vista previa</translation>
    </message>
    <message>
        <source>Remove from the list</source>
        <translation>Quitar de la lista</translation>
    </message>
    <message>
        <source>Preview %1</source>
        <translation>Vista previa de %1</translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation>Quitar %1</translation>
    </message>
</context>
<context>
    <name>vantoro::KXTaskListsView</name>
    <message>
        <source>Extractions</source>
        <translation>Extracciones</translation>
    </message>
</context>
<context>
    <name>vantoro::MainWindows</name>
    <message>
        <source>Stop compressing and quit?</source>
        <translation>¿Detener la compresión y salir?</translation>
    </message>
    <message>
        <source>An archive is being written. It will not be kept.</source>
        <translation>Se está escribiendo un archivo comprimido. No se conservará.</translation>
    </message>
    <message>
        <source>Stop extracting and quit?</source>
        <translation>¿Detener la extracción y salir?</translation>
    </message>
    <message>
        <source>An archive is being extracted. What is not finished is removed.</source>
        <translation>Se está extrayendo un archivo comprimido. Lo que no esté terminado se eliminará.</translation>
    </message>
    <message>
        <source>Go On</source>
        <translation>Seguir</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Salir</translation>
    </message>
</context>
<context>
    <name>vantoro::PackTable</name>
    <message>
        <source>Files to compress</source>
        <translation>Archivos que se van a comprimir</translation>
    </message>
</context>
<context>
    <name>vantoro::PasswordField</name>
    <message>
        <source>Password</source>
        <translation>Contraseña</translation>
    </message>
    <message>
        <source>Caps Lock is on</source>
        <translation>Bloq Mayús está activado</translation>
    </message>
    <message>
        <source>Hide password</source>
        <translation>Ocultar la contraseña</translation>
    </message>
    <message>
        <source>Show password</source>
        <translation>Mostrar la contraseña</translation>
    </message>
</context>
<context>
    <name>vantoro::PasswordPanel</name>
    <message>
        <source>Password &amp;encoding:</source>
        <translation>&amp;Codificación de la contraseña:</translation>
    </message>
    <message>
        <source>Password encoding</source>
        <translation>Codificación de la contraseña</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Detener</translation>
    </message>
    <message>
        <source>Continue</source>
        <translation>Continuar</translation>
    </message>
    <message>
        <source>Enter a PASSWORD to open the archive &quot;%1&quot;.</source>
        <translation>Introduzca la contraseña para abrir el archivo «%1».</translation>
    </message>
    <message>
        <source>That password is not right. Please try again.</source>
        <translation>La contraseña no es correcta. Inténtelo de nuevo.</translation>
    </message>
    <message>
        <source>Caps Lock is on.</source>
        <translation>Bloq Mayús está activado.</translation>
    </message>
</context>
<context>
    <name>vantoro::PasswordPrompt</name>
    <message>
        <source>Caps Lock is on</source>
        <translation>Bloq Mayús está activado</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>Aceptar</translation>
    </message>
    <message>
        <source>Password</source>
        <translation>Contraseña</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>“%1” is encrypted. Which password opens it?</source>
        <translation>«%1» está cifrado. ¿Con qué contraseña se abre?</translation>
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
        <translation>Extraer archivos…</translation>
    </message>
    <message>
        <source>Open Main Window</source>
        <translation>Abrir la ventana principal</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Ajustes</translation>
    </message>
    <message>
        <source>How to Use</source>
        <translation>Cómo se usa</translation>
    </message>
    <message>
        <source>Quit Vantoro</source>
        <translation>Salir de Vantoro</translation>
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
        <translation>Abrir</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Vista previa</translation>
    </message>
    <message>
        <source>Contents</source>
        <translation>Contenido</translation>
    </message>
    <message>
        <source>Nothing to show</source>
        <translation>Nada que mostrar</translation>
    </message>
</context>
<context>
    <name>vantoro::PreviewWindow</name>
    <message>
        <source>Extract</source>
        <translation>Extraer</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Vista previa</translation>
    </message>
    <message>
        <source>Close Preview</source>
        <translation>Cerrar la vista previa</translation>
    </message>
    <message>
        <source>Extract This File</source>
        <translation>Extraer este archivo</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>Imagen</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>Texto</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Páginas</translation>
    </message>
    <message>
        <source>This document is protected by a password of its own.</source>
        <translation>Este documento está protegido con su propia contraseña.</translation>
    </message>
    <message>
        <source>This document is damaged.</source>
        <translation>Este documento está dañado.</translation>
    </message>
    <message numerus="yes">
        <source>%Ln pages</source>
        <translation>
            <numerusform>%Ln página</numerusform>
            <numerusform>%Ln páginas</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>vantoro::ProgressOverlay</name>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Working</source>
        <translation>En curso</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Progreso</translation>
    </message>
    <message>
        <source>Stopping…</source>
        <translation>Deteniendo…</translation>
    </message>
</context>
<context>
    <name>vantoro::ProgressPanel</name>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>%1 — %2/s</source>
        <translation>%1 — %2/s</translation>
    </message>
    <message>
        <source>Stopping…</source>
        <translation>Deteniendo…</translation>
    </message>
</context>
<context>
    <name>vantoro::ReportWindow</name>
    <message>
        <source>Report</source>
        <translation>Informe</translation>
    </message>
    <message>
        <source>Files that were refused or damaged</source>
        <translation>Archivos rechazados o dañados</translation>
    </message>
    <message>
        <source>&amp;Copy Report</source>
        <translation>&amp;Copiar el informe</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Cerrar</translation>
    </message>
</context>
<context>
    <name>vantoro::SettingsCard</name>
    <message>
        <source>Until Vantoro is started again.</source>
        <translation>Hasta que Vantoro se inicie de nuevo.</translation>
    </message>
</context>
<context>
    <name>vantoro::SettingsWindow</name>
    <message>
        <source>Settings</source>
        <translation>Ajustes</translation>
    </message>
    <message>
        <source>Opening archives</source>
        <translation>Apertura de archivos</translation>
    </message>
    <message>
        <source>&amp;Look inside before extracting</source>
        <translation>&amp;Ver el contenido antes de extraer</translation>
    </message>
    <message>
        <source>An archive that you open is shown first, and extracted when you say so.</source>
        <translation>El archivo que abra se muestra primero y se extrae cuando usted lo indique.</translation>
    </message>
    <message>
        <source>Main window with a &amp;side panel</source>
        <translation>Ventana principal con panel &amp;lateral</translation>
    </message>
    <message>
        <source>One window with the pages listed at its side, instead of the one with tabs. It extracts what you open without showing it first.</source>
        <translation>Una ventana con las páginas enumeradas a un lado, en lugar de pestañas. Extrae lo que abra sin mostrarlo antes.</translation>
    </message>
    <message>
        <source>Only where it is needed</source>
        <translation>Solo si hace falta</translation>
    </message>
    <message>
        <source>Always</source>
        <translation>Siempre</translation>
    </message>
    <message>
        <source>Never</source>
        <translation>Nunca</translation>
    </message>
    <message>
        <source>Extracting</source>
        <translation>Extracción</translation>
    </message>
    <message>
        <source>Make a &amp;folder for what comes out</source>
        <translation>Crear una &amp;carpeta para lo extraído</translation>
    </message>
    <message>
        <source>It is not needed when the archive holds a single item. Never: everything lies loose in the destination.</source>
        <translation>No hace falta si el archivo contiene un solo elemento. Nunca: todo queda suelto en el destino.</translation>
    </message>
    <message>
        <source>&amp;Open what was extracted</source>
        <translation>&amp;Abrir lo extraído</translation>
    </message>
    <message>
        <source>The folder or file opens when it is ready.</source>
        <translation>La carpeta o el archivo se abre cuando está listo.</translation>
    </message>
    <message>
        <source>Move the archive to the &amp;Trash</source>
        <translation>Mover el archivo a la &amp;papelera</translation>
    </message>
    <message>
        <source>With all its parts, once everything has come out whole.</source>
        <translation>Con todas sus partes, una vez que todo se haya extraído íntegro.</translation>
    </message>
    <message>
        <source>Give the new folder the archive&apos;s &amp;date</source>
        <translation>Dar a la carpeta nueva la &amp;fecha del archivo</translation>
    </message>
    <message>
        <source>Otherwise the folder bears the time of its extraction. Files always keep their own dates.</source>
        <translation>Si no, la carpeta lleva la hora de la extracción. Los archivos conservan siempre sus fechas.</translation>
    </message>
    <message>
        <source>Ask every time</source>
        <translation>Preguntar siempre</translation>
    </message>
    <message>
        <source>Beside the archive</source>
        <translation>Junto al archivo</translation>
    </message>
    <message>
        <source>Places</source>
        <translation>Lugares</translation>
    </message>
    <message>
        <source>&amp;Where archives are extracted to</source>
        <translation>&amp;Dónde se extraen los archivos</translation>
    </message>
    <message>
        <source>Holds for archives that you open or drop, and for the file manager&apos;s menu.</source>
        <translation>Vale para los archivos que abra o suelte y para el menú del gestor de archivos.</translation>
    </message>
    <message>
        <source>&amp;Desktop folder</source>
        <translation>Carpeta &amp;Escritorio</translation>
    </message>
    <message>
        <source>Where &quot;Extract to the Desktop&quot; puts things.</source>
        <translation>Donde «Extraer en el escritorio» deja las cosas.</translation>
    </message>
    <message>
        <source> %</source>
        <translation> %</translation>
    </message>
    <message>
        <source>File names in old archives</source>
        <translation>Nombres en archivos antiguos</translation>
    </message>
    <message>
        <source>&amp;Encoding of file names</source>
        <translation>&amp;Codificación de los nombres</translation>
    </message>
    <message>
        <source>How names are read in archives that do not say it themselves. Without a choice, it is found out.</source>
        <translation>Cómo se leen los nombres en los archivos que no lo indican. Si no se elige, se detecta.</translation>
    </message>
    <message>
        <source>Ask when &amp;less sure than</source>
        <translation>Preguntar si la certeza es &amp;menor que</translation>
    </message>
    <message>
        <source>A guess at the encoding that is surer than this is used without a question.</source>
        <translation>Una estimación más segura que esto se usa sin preguntar.</translation>
    </message>
    <message>
        <source>Choose the Desktop folder</source>
        <translation>Elija la carpeta Escritorio</translation>
    </message>
    <message>
        <source>Select</source>
        <translation>Seleccionar</translation>
    </message>
</context>
<context>
    <name>vantoro::ShortcutsWindow</name>
    <message>
        <source>Keyboard Shortcuts</source>
        <translation>Atajos de teclado</translation>
    </message>
    <message>
        <source>In every window</source>
        <translation>En cualquier ventana</translation>
    </message>
    <message>
        <source>On the pages</source>
        <translation>En las páginas</translation>
    </message>
</context>
<context>
    <name>vantoro::SideTable</name>
    <message>
        <source>Pages</source>
        <translation>Páginas</translation>
    </message>
</context>
<context>
    <name>vantoro::SpinningIndicator</name>
    <message>
        <source>Busy</source>
        <translation>Ocupado</translation>
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
        <translation>Seguridad de la contraseña</translation>
    </message>
</context>
<context>
    <name>vantoro::TaskWindow</name>
    <message>
        <source>Extractions</source>
        <translation>Extracciones</translation>
    </message>
    <message>
        <source>File &amp;names:</source>
        <translation>&amp;Nombres de archivo:</translation>
    </message>
    <message>
        <source>Encoding of file names</source>
        <translation>Codificación de los nombres de archivo</translation>
    </message>
    <message numerus="yes">
        <source>%n archive(s)</source>
        <translation>
            <numerusform>%n archivo</numerusform>
            <numerusform>%n archivos</numerusform>
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
        <translation>Menú</translation>
    </message>
</context>
<context>
    <name>vantoro::WaitPanel</name>
    <message>
        <source>Waiting</source>
        <translation>En espera</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Cancelar</translation>
    </message>
    <message>
        <source>Cancel %1</source>
        <translation>Cancelar %1</translation>
    </message>
</context>
</TS>
