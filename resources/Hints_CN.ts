<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en_US">
<context>
    <name>CommonMessageBox</name>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>No</source>
        <translation>否</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Yes</source>
        <translation>是</translation>
    </message>
</context>
<context>
    <name>CommonTitleBar</name>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Maximize</source>
        <translation>最大化</translation>
    </message>
    <message>
        <source>Minimize</source>
        <translation>最小化</translation>
    </message>
</context>
<context>
    <name>LogSettingsDlg</name>
    <message>
        <source>Log config file</source>
        <translation>日志配置文件</translation>
    </message>
    <message>
        <source>The level cannot be set: this file cannot be written. Vantrel keeps trying. You can choose another file.</source>
        <translation>无法设置日志等级：该文件无法写入。Vantrel 会不断重试。您可以选择其他文件。</translation>
    </message>
    <message>
        <source>The level cannot be set: this file lacks a line with log4cpp.rootCategory or with log4cpp.category.qzsdk. Vantrel keeps trying until both are there. You can choose another file.</source>
        <translation>无法设置日志等级：该文件缺少包含 log4cpp.rootCategory 或 log4cpp.category.qzsdk 的行。Vantrel 会不断重试，直到两者齐全为止。您可以选择其他文件。</translation>
    </message>
</context>
<context>
    <name>LogViewer</name>
    <message numerus="yes">
        <source>%n of the lines found are hidden by levels</source>
        <translation>
            <numerusform>找到的日志行中有%n行因等级设置而隐藏</numerusform>
        </translation>
    </message>
    <message>
        <source>No line matches. Empty the field and press Enter to see the whole log.</source>
        <translation>没有匹配的日志行。清空搜索框并按回车键可查看全部日志。</translation>
    </message>
    <message>
        <source>The first 100,000 lines; the file goes on.</source>
        <translation>仅显示前100,000行，文件后面还有内容。</translation>
    </message>
    <message>
        <source>Choose columns</source>
        <translation>选择列</translation>
    </message>
    <message>
        <source>Log lines</source>
        <translation>日志行</translation>
    </message>
    <message>
        <source>Search</source>
        <translation>搜索</translation>
    </message>
    <message>
        <source>Start the search</source>
        <translation>开始搜索</translation>
    </message>
</context>
<context>
    <name>QCheckBoxHeader</name>
    <message>
        <source>All rows</source>
        <translation>所有行</translation>
    </message>
</context>
<context>
    <name>Vantrel</name>
    <message>
        <source>Choose the zip file</source>
        <translation>选择ZIP文件</translation>
    </message>
    <message>
        <source>Export path</source>
        <translation>导出路径</translation>
    </message>
    <message>
        <source>Log level settings</source>
        <translation>日志等级设置</translation>
    </message>
    <message>
        <source>Log source</source>
        <translation>日志源</translation>
    </message>
    <message>
        <source>SDK log files</source>
        <translation>SDK日志文件</translation>
    </message>
    <message>
        <source>The folder %1 has no logs.</source>
        <translation>文件夹 %1 中没有日志。</translation>
    </message>
</context>
</TS>
