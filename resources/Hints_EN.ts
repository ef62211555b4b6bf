<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="en_US">
<context>
    <name>LogViewer</name>
    <message numerus="yes">
        <source>%n of the lines found are hidden by levels</source>
        <translation>
            <numerusform>%n of the lines found is hidden by levels</numerusform>
            <numerusform>%n of the lines found are hidden by levels</numerusform>
        </translation>
    </message>
</context>
</TS>
