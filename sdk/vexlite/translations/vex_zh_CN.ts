<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN" sourcelanguage="en_US">
<context>
    <name>vex_vexcomm</name>
    <message id="_vex_vexProductName">
        <source>Zento Office</source>
        <translation>Zento 办公</translation>
    </message>
    <message id="_vex_vexThanksTo_PRO">
        <source>This product includes the FreeType font engine (The FreeType Project, www.freetype.org); Chinese word segmentation, phonetic annotation and simplified/traditional Chinese conversion technology from the information retrieval research centre of a university; and the Hunspell spell checker (hunspell.github.io). We thank their authors.</source>
        <translation>本产品使用了 FreeType 字体引擎（The FreeType Project，www.freetype.org）；中文分词、汉语注音及简繁转换技术，来自一所大学的信息检索研究中心；以及 Hunspell 拼写检查器（hunspell.github.io）。谨向上述作者致谢。</translation>
    </message>
</context>
</TS>
