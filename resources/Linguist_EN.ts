<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="en_US">
<context>
    <name>CommonMessageBox</name>
    <message>
        <source>Form</source>
        <translation>Form</translation>
    </message>
</context>
<context>
    <name>ExportInfoDlg</name>
    <message>
        <source>Export info finished !</source>
        <translation>Export info finished !</translation>
    </message>
    <message>
        <source>Export selected info finished !</source>
        <translation>Export selected info finished !</translation>
    </message>
</context>
<context>
    <name>LogSettingsDlg</name>
    <message>
        <source>DEBUG</source>
        <translation>DEBUG</translation>
    </message>
    <message>
        <source>FATAL</source>
        <translation>FATAL</translation>
    </message>
    <message>
        <source>INFO</source>
        <translation>INFO</translation>
    </message>
    <message>
        <source>Interval for update(ms)</source>
        <translation>Interval for update(ms)</translation>
    </message>
    <message>
        <source>Log Level Setting</source>
        <translation>Log Level Setting</translation>
    </message>
    <message>
        <source>Max.Displayed Logs</source>
        <translation>Max.Displayed Logs</translation>
    </message>
</context>
<context>
    <name>Vantrel</name>
    <message>
        <source>Event Type</source>
        <translation>Event Type</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>Export</translation>
    </message>
    <message>
        <source>Export All SDK Log</source>
        <translation>Export All SDK Log</translation>
    </message>
    <message>
        <source>Export Selected SDK Log</source>
        <translation>Export Selected SDK Log</translation>
    </message>
    <message>
        <source>Export to File</source>
        <translation>Export to File</translation>
    </message>
    <message>
        <source>Exporting information...</source>
        <translation>Exporting information...</translation>
    </message>
    <message>
        <source>File Name</source>
        <translation>File Name</translation>
    </message>
    <message>
        <source>File Size</source>
        <translation>File Size</translation>
    </message>
    <message>
        <source>File Time</source>
        <translation>File Time</translation>
    </message>
    <message>
        <source>LogSource</source>
        <translation>LogSource</translation>
    </message>
    <message>
        <source>NIC Information</source>
        <translation>NIC Information</translation>
    </message>
    <message>
        <source>SDK Log</source>
        <translation>SDK Log</translation>
    </message>
    <message>
        <source>Save ZIP File</source>
        <translation>Save ZIP File</translation>
    </message>
    <message>
        <source>System Dump</source>
        <translation>System Dump</translation>
    </message>
    <message>
        <source>System Information</source>
        <translation>System Information</translation>
    </message>
    <message>
        <source>System Log</source>
        <translation>System Log</translation>
    </message>
</context>
<context>
    <name>LogViewer</name>
    <message>
        <source>CopyAll</source>
        <translation>CopyAll</translation>
    </message>
    <message>
        <source>CopySelected</source>
        <translation>CopySelected</translation>
    </message>
    <message>
        <source>DEBUG</source>
        <translation>DEBUG</translation>
    </message>
    <message>
        <source>ERROR</source>
        <translation>ERROR</translation>
    </message>
    <message>
        <source>INFO</source>
        <translation>INFO</translation>
    </message>
    <message>
        <source>Log Level</source>
        <translation>Log Level</translation>
    </message>
    <message>
        <source>Log Message</source>
        <translation>Log Message</translation>
    </message>
    <message>
        <source>Log Source</source>
        <translation>Log Source</translation>
    </message>
    <message>
        <source>Log Timestamp</source>
        <translation>Log Timestamp</translation>
    </message>
    <message>
        <source>WARN</source>
        <translation>WARN</translation>
    </message>
</context>
</TS>
