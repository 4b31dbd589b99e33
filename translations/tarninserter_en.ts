<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="en">
<context>
    <name>TARN::NewFileDialog</name>
    <message>
        <source>Select Directory</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please enter a name.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please enter a path.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cannot make the path %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>File %1 already exists.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Can not create file %1
%2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New TARN Config File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Name:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Enter a name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Create in:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Browse...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add to current project</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TARN::TarnFileWizardFactory</name>
    <message>
        <source>TARN Config File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Create a TARN Config File.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
