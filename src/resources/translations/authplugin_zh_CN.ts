<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en_US">
<context>
    <name>KEnterpriseCenterTriggerCommand</name>
    <message>
        <source>Enterprise Center</source>
        <translation>企业中心</translation>
    </message>
</context>
<context>
    <name>KLoginStatusTipWidget</name>
    <message>
        <source>Failed to launch Nimbo process</source>
        <translation>无法启动 Nimbo 进程</translation>
    </message>
    <message>
        <source>IPC errors occured when Get login information</source>
        <translation>获取登录信息时发生 IPC 错误</translation>
    </message>
    <message>
        <source>RPC errors occured when Get login information</source>
        <translation>获取登录信息时发生 RPC 错误</translation>
    </message>
</context>
<context>
    <name>KUserCenterMenuButton</name>
    <message>
        <source>abnormal network status, turn to be offline status</source>
        <translation>网络异常，已转为离线状态</translation>
    </message>
    <message>
        <source>User centre</source>
        <translation>用户中心</translation>
    </message>
</context>
<context>
    <name>KUserCenterMenuCommand</name>
    <message>
        <source>You have signed in Zento Office.</source>
        <translation>您已登录 Zento 办公。</translation>
    </message>
</context>
<context>
    <name>KxNimboCustomFrameDlgTitle</name>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
</context>
<context>
    <name>KxOpenPersonalCenterCommand</name>
    <message>
        <source>Personal Center</source>
        <translation>个人中心</translation>
    </message>
</context>
</TS>
