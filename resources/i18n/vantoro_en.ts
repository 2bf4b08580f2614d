<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>ArchiveTexts</name>
    <message numerus="yes">
        <source>%Ln entries</source>
        <translation>
            <numerusform>%Ln entry</numerusform>
            <numerusform>%Ln entries</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln files</source>
        <translation>
            <numerusform>%Ln file</numerusform>
            <numerusform>%Ln files</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln folders</source>
        <translation>
            <numerusform>%Ln folder</numerusform>
            <numerusform>%Ln folders</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln volumes</source>
        <translation>
            <numerusform>%Ln volume</numerusform>
            <numerusform>%Ln volumes</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ExtractionSummary</name>
    <message numerus="yes">
        <source>%n archive(s) were extracted</source>
        <translation>
            <numerusform>%n archive was extracted</numerusform>
            <numerusform>%n archives were extracted</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n entry(s) were damaged or refused</source>
        <translation>
            <numerusform>%n entry was damaged or refused</numerusform>
            <numerusform>%n entries were damaged or refused</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>and %n more</source>
        <translation>
            <numerusform>and %n more</numerusform>
            <numerusform>and %n more</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>FilePreview</name>
    <message numerus="yes">
        <source>%n item(s)</source>
        <translation>
            <numerusform>%n item</numerusform>
            <numerusform>%n items</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ProgressPanel</name>
    <message numerus="yes">
        <source>About %n seconds left</source>
        <translation>
            <numerusform>About %n second left</numerusform>
            <numerusform>About %n seconds left</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>About %n minute(s) left</source>
        <translation>
            <numerusform>About %n minute left</numerusform>
            <numerusform>About %n minutes left</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>About %n hour(s) left</source>
        <translation>
            <numerusform>About %n hour left</numerusform>
            <numerusform>About %n hours left</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>vantoro::ContentsPresenter</name>
    <message numerus="yes">
        <source>%Ln entries extracted</source>
        <translation>
            <numerusform>%Ln entry extracted</numerusform>
            <numerusform>%Ln entries extracted</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1, and %Ln more failed</source>
        <translation>
            <numerusform>%1, and %Ln more failed</numerusform>
            <numerusform>%1, and %Ln more failed</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>vantoro::KXPackViewController</name>
    <message numerus="yes">
        <source>%n item(s)</source>
        <translation>
            <numerusform>%n item</numerusform>
            <numerusform>%n items</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>vantoro::PreviewWindow</name>
    <message numerus="yes">
        <source>%Ln pages</source>
        <translation>
            <numerusform>%Ln page</numerusform>
            <numerusform>%Ln pages</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>vantoro::TaskWindow</name>
    <message numerus="yes">
        <source>%n archive(s)</source>
        <translation>
            <numerusform>%n archive</numerusform>
            <numerusform>%n archives</numerusform>
        </translation>
    </message>
</context>
</TS>
