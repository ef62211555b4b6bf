<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en_US">
<context>
    <name>CommonMessageBox</name>
    <message>
        <source>Form</source>
        <translation>窗口</translation>
    </message>
    <message>
        <source>Vantrel</source>
        <translation>Vantrel</translation>
    </message>
</context>
<context>
    <name>ExportInfoDlg</name>
    <message>
        <source>Export info finished !</source>
        <translation>导出信息结束！</translation>
    </message>
    <message>
        <source>Export selected info finished !</source>
        <translation>导出所选信息结束！</translation>
    </message>
    <message>
        <source>View</source>
        <translation>查看</translation>
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
        <translation>刷新时间</translation>
    </message>
    <message>
        <source>Log Level Setting</source>
        <translation>日志等级</translation>
    </message>
    <message>
        <source>LogSettingsDlg</source>
        <translation>日志配置</translation>
    </message>
    <message>
        <source>Max.Displayed Logs</source>
        <translation>最大显示行数</translation>
    </message>
    <message>
        <source>Select Log Config File</source>
        <translation>选择日志配置文件</translation>
    </message>
</context>
<context>
    <name>Vantrel</name>
    <message>
        <source>Client Dump</source>
        <translation>客户端Dump</translation>
    </message>
    <message>
        <source>Event Type</source>
        <translation>导出选项</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>导出</translation>
    </message>
    <message>
        <source>Export All SDK Log</source>
        <translation>导出所有SDK日志</translation>
    </message>
    <message>
        <source>Export Selected SDK Log</source>
        <translation>导出选择SDK日志</translation>
    </message>
    <message>
        <source>Export to File</source>
        <translation>导出路径</translation>
    </message>
    <message>
        <source>Exporting information...</source>
        <translation>正在导出信息...</translation>
    </message>
    <message>
        <source>File Name</source>
        <translation>文件名称</translation>
    </message>
    <message>
        <source>File Size</source>
        <translation>文件大小</translation>
    </message>
    <message>
        <source>File Time</source>
        <translation>文件时间</translation>
    </message>
    <message>
        <source>LogSource(Process Name)</source>
        <translation>日志源（进程名）</translation>
    </message>
    <message>
        <source>Vantrel</source>
        <translation>Vantrel</translation>
    </message>
    <message>
        <source>NIC Information</source>
        <translation>网卡信息</translation>
    </message>
    <message>
        <source>SDK Log</source>
        <translation>SDK日志</translation>
    </message>
    <message>
        <source>Save ZIP File</source>
        <translation>保存ZIP压缩包</translation>
    </message>
    <message>
        <source>System Dump</source>
        <translation>系统蓝屏日志</translation>
    </message>
    <message>
        <source>System Information</source>
        <translation>系统信息</translation>
    </message>
    <message>
        <source>System Log</source>
        <translation>系统日志</translation>
    </message>
</context>
<context>
    <name>LogViewer</name>
    <message>
        <source>CopyAll</source>
        <translation>拷贝所有日志</translation>
    </message>
    <message>
        <source>CopySelected</source>
        <translation>拷贝选择日志</translation>
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
        <translation>日志等级</translation>
    </message>
    <message>
        <source>Log Message</source>
        <translation>日志内容</translation>
    </message>
    <message>
        <source>Log Source</source>
        <translation>日志来源</translation>
    </message>
    <message>
        <source>Log Timestamp</source>
        <translation>日志时间</translation>
    </message>
    <message>
        <source>LogViewer</source>
        <translation>日志浏览</translation>
    </message>
    <message>
        <source>More</source>
        <translation>更多</translation>
    </message>
    <message>
        <source>WARN</source>
        <translation>WARN</translation>
    </message>
</context>
</TS>
