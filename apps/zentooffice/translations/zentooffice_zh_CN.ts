<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>KAboutDialog</name>
    <message>
        <source>About %1</source>
        <translation>关于 %1</translation>
    </message>
    <message>
        <source>Version %1</source>
        <translation>版本 %1</translation>
    </message>
</context>
<context>
    <name>KDeveloperPanel</name>
    <message>
        <source>Developer Panel</source>
        <translation>开发者面板</translation>
    </message>
    <message>
        <source>Account (simulator)</source>
        <translation>账号（模拟器）</translation>
    </message>
    <message>
        <source>Sign &amp;in</source>
        <translation>登录(&amp;I)</translation>
    </message>
    <message>
        <source>Sign &amp;out</source>
        <translation>退出登录(&amp;O)</translation>
    </message>
    <message>
        <source>&amp;Company account</source>
        <translation>企业账号(&amp;C)</translation>
    </message>
    <message>
        <source>Demo picture</source>
        <translation>演示头像</translation>
    </message>
    <message>
        <source>Initials on teal</source>
        <translation>青色首字母头像</translation>
    </message>
    <message>
        <source>Initials on orange</source>
        <translation>橙色首字母头像</translation>
    </message>
    <message>
        <source>Other picture...</source>
        <translation>其他图片...</translation>
    </message>
    <message>
        <source>Cloud client errors</source>
        <translation>云客户端错误</translation>
    </message>
    <message>
        <source>Host</source>
        <translation>宿主</translation>
    </message>
    <message>
        <source>&amp;Language:</source>
        <translation>语言(&amp;L)：</translation>
    </message>
    <message>
        <source>Display &amp;scale:</source>
        <translation>显示缩放(&amp;S)：</translation>
    </message>
    <message>
        <source>The screen&apos;s</source>
        <translation>跟随屏幕</translation>
    </message>
    <message>
        <source>The internet (profile)</source>
        <translation>互联网（配置文件）</translation>
    </message>
    <message>
        <source>Local server %1</source>
        <translation>本地服务器 %1</translation>
    </message>
    <message>
        <source>Unreachable server</source>
        <translation>无法访问的服务器</translation>
    </message>
    <message>
        <source>Activity</source>
        <translation>活动</translation>
    </message>
    <message>
        <source>Usage events</source>
        <translation>使用事件</translation>
    </message>
    <message>
        <source>Exit message</source>
        <translation>退出信息</translation>
    </message>
    <message>
        <source>Picture</source>
        <translation>头像</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>语言</translation>
    </message>
    <message>
        <source>Display scale</source>
        <translation>显示缩放</translation>
    </message>
    <message>
        <source>Service pages</source>
        <translation>服务页面</translation>
    </message>
    <message>
        <source>Images (*.png *.jpg *.jpeg *.bmp *.gif)</source>
        <translation>图片 (*.png *.jpg *.jpeg *.bmp *.gif)</translation>
    </message>
    <message>
        <source>Cannot write a picture beside %1</source>
        <translation>无法在 %1 旁写入头像</translation>
    </message>
    <message>
        <source>Cannot write %1: %2</source>
        <translation>无法写入 %1：%2</translation>
    </message>
    <message>
        <source>Opened %1</source>
        <translation>已打开 %1</translation>
    </message>
    <message>
        <source>Served %1 %2: %3</source>
        <translation>已响应 %1 %2：%3</translation>
    </message>
    <message>
        <source>Client: login status changed</source>
        <translation>客户端：登录状态已改变</translation>
    </message>
    <message>
        <source>Client: user information changed</source>
        <translation>客户端：用户信息已改变</translation>
    </message>
    <message>
        <source>Client: the cloud service did not start</source>
        <translation>客户端：云服务未能启动</translation>
    </message>
    <message>
        <source>Client: the cloud service exited: %1</source>
        <translation>客户端：云服务已退出：%1</translation>
    </message>
    <message>
        <source>Sync cache: IPC error getting user information</source>
        <translation>同步缓存：获取用户信息时发生 IPC 错误</translation>
    </message>
    <message>
        <source>Sync cache: RPC error getting user information</source>
        <translation>同步缓存：获取用户信息时发生 RPC 错误</translation>
    </message>
    <message>
        <source>Pict&amp;ure:</source>
        <translation>头像(&amp;U)：</translation>
    </message>
    <message>
        <source>Launch faile&amp;d</source>
        <translation>启动失败(&amp;D)</translation>
    </message>
    <message>
        <source>The cloud service process did not start</source>
        <translation>云服务进程未能启动</translation>
    </message>
    <message>
        <source>&amp;Exited with:</source>
        <translation>异常退出(&amp;E)：</translation>
    </message>
    <message>
        <source>The cloud service process exited with the error below</source>
        <translation>云服务进程因下面的错误退出</translation>
    </message>
    <message>
        <source>I&amp;PC error</source>
        <translation>IPC 错误(&amp;P)</translation>
    </message>
    <message>
        <source>IPC error while getting the user information</source>
        <translation>获取用户信息时发生 IPC 错误</translation>
    </message>
    <message>
        <source>&amp;RPC error</source>
        <translation>RPC 错误(&amp;R)</translation>
    </message>
    <message>
        <source>RPC error while getting the user information</source>
        <translation>获取用户信息时发生 RPC 错误</translation>
    </message>
    <message>
        <source>Offli&amp;ne: signed out by the network</source>
        <translation>离线(&amp;N)：因网络退出登录</translation>
    </message>
    <message>
        <source>Service pa&amp;ges:</source>
        <translation>服务页面(&amp;G)：</translation>
    </message>
    <message>
        <source>Clear the lis&amp;t</source>
        <translation>清空列表(&amp;T)</translation>
    </message>
    <message>
        <source>Activity and usage events</source>
        <translation>活动与使用事件</translation>
    </message>
    <message>
        <source>Product</source>
        <translation>产品</translation>
    </message>
    <message>
        <source>Personal accounts get the account button and the personal centre</source>
        <translation>个人账号也有账号按钮和个人中心</translation>
    </message>
    <message>
        <source>An intranet build: no personal centre</source>
        <translation>内网版本：没有个人中心</translation>
    </message>
    <message>
        <source>E&amp;mbedded in another program</source>
        <translation>嵌入其他程序(&amp;M)</translation>
    </message>
    <message>
        <source>This window reports KMainWindow::isEmbedding(): no account button, no personal centre</source>
        <translation>此窗口的 KMainWindow::isEmbedding() 为真：没有账号按钮和个人中心</translation>
    </message>
    <message>
        <source>Host command %1</source>
        <translation>宿主命令 %1</translation>
    </message>
    <message>
        <source>Account service: entry %1 (&quot;%2&quot;, &quot;%3&quot;)</source>
        <translation>账号服务：入口 %1（&quot;%2&quot;，&quot;%3&quot;）</translation>
    </message>
</context>
<context>
    <name>KDocumentRequest</name>
    <message>
        <source>an empty argument</source>
        <translation>参数为空</translation>
    </message>
    <message>
        <source>neither a document address nor a file</source>
        <translation>既不是文档地址也不是文件</translation>
    </message>
    <message>
        <source>the address does not ask to open a document</source>
        <translation>该地址不是打开文档的请求</translation>
    </message>
    <message>
        <source>the address names no file id</source>
        <translation>该地址缺少文件 ID</translation>
    </message>
    <message>
        <source>the address has no display name in Base64</source>
        <translation>该地址缺少 Base64 编码的显示名称</translation>
    </message>
    <message>
        <source>no such file</source>
        <translation>文件不存在</translation>
    </message>
    <message>
        <source>the file cannot be read</source>
        <translation>无法读取该文件</translation>
    </message>
    <message>
        <source>the display name is empty, not UTF-8 or holds control characters</source>
        <translation>显示名称为空、不是 UTF-8 或含有控制字符</translation>
    </message>
    <message>
        <source>a folder, not a file</source>
        <translation>是文件夹，不是文件</translation>
    </message>
    <message>
        <source>a pipe, device or socket, not a regular file</source>
        <translation>是管道、设备或套接字，不是普通文件</translation>
    </message>
</context>
<context>
    <name>KHostAccountCommand</name>
    <message>
        <source>Sign In</source>
        <translation>登录</translation>
    </message>
    <message>
        <source>Sign Out</source>
        <translation>退出登录</translation>
    </message>
</context>
<context>
    <name>KSimulatorStateEditor</name>
    <message>
        <source>it is not JSON the simulator reads, so it was left as it is (%1)</source>
        <translation>它不是模拟器可读取的 JSON，因此保持原样（%1）</translation>
    </message>
    <message>
        <source>it does not hold a JSON object, so it was left as it is</source>
        <translation>它不包含 JSON 对象，因此保持原样</translation>
    </message>
    <message>
        <source>it is not a regular file</source>
        <translation>它不是普通文件</translation>
    </message>
    <message>
        <source>it is larger than a state file can be, so it was left as it is</source>
        <translation>它超过了状态文件的大小上限，因此保持原样</translation>
    </message>
</context>
<context>
    <name>KSingleInstance</name>
    <message>
        <source>no runtime directory for the instance&apos;s socket</source>
        <translation>没有可放置实例套接字的运行时目录</translation>
    </message>
    <message>
        <source>another start on this profile holds %1</source>
        <translation>此配置上的另一次启动占用着 %1</translation>
    </message>
    <message>
        <source>the running host did not take the arguments</source>
        <translation>正在运行的宿主没有接收这些参数</translation>
    </message>
    <message>
        <source>a host runs on this profile (process %1) but cannot be reached</source>
        <translation>此配置上已有宿主在运行（进程 %1），但无法与其联系</translation>
    </message>
</context>
<context>
    <name>KZentoOfficeHost</name>
    <message>
        <source>%1 does not offer GetHostWeb</source>
        <translation>%1 未提供 GetHostWeb</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1：%2</translation>
    </message>
    <message>
        <source>not opened, beyond %1 documents at once: %2 more</source>
        <translation>超出一次最多打开 %1 个文档的限制，另有 %2 个未打开</translation>
    </message>
    <message>
        <source>also refused: %1 more</source>
        <translation>另有 %1 个被拒绝</translation>
    </message>
</context>
<context>
    <name>KZentoOfficeWindow</name>
    <message>
        <source>%1 is not a text file this window can show.</source>
        <translation>%1 不是此窗口可以显示的文本文件。</translation>
    </message>
    <message>
        <source>%1

A cloud document (file id %2), opened through %3://.</source>
        <translation>%1

云文档（文件 ID %2），通过 %3:// 打开。</translation>
    </message>
    <message>
        <source>Document %1</source>
        <translation>文档 %1</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>打开</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <translation>%1：%2</translation>
    </message>
    <message>
        <source>The web module is missing: %1</source>
        <translation>缺少网页模块：%1</translation>
    </message>
    <message>
        <source>Cannot open %1</source>
        <translation>无法打开 %1</translation>
    </message>
    <message>
        <source>Title bar</source>
        <translation>标题栏</translation>
    </message>
    <message>
        <source>Menu bar</source>
        <translation>菜单栏</translation>
    </message>
    <message>
        <source>Documents</source>
        <translation>文档</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>文件(&amp;F)</translation>
    </message>
    <message>
        <source>&amp;Account</source>
        <translation>账号(&amp;A)</translation>
    </message>
    <message>
        <source>&amp;View</source>
        <translation>视图(&amp;V)</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>帮助(&amp;H)</translation>
    </message>
    <message>
        <source>&amp;New Document</source>
        <translation>新建文档(&amp;N)</translation>
    </message>
    <message>
        <source>New &amp;Window</source>
        <translation>新建窗口(&amp;W)</translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <translation>打开(&amp;O)...</translation>
    </message>
    <message>
        <source>&amp;Close Tab</source>
        <translation>关闭标签页(&amp;C)</translation>
    </message>
    <message>
        <source>Close Win&amp;dow</source>
        <translation>关闭窗口(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>退出(&amp;Q)</translation>
    </message>
    <message>
        <source>Go to the Account &amp;Button</source>
        <translation>转到账号按钮(&amp;B)</translation>
    </message>
    <message>
        <source>&amp;Developer Panel</source>
        <translation>开发者面板(&amp;D)</translation>
    </message>
    <message>
        <source>&amp;Welcome Page</source>
        <translation>欢迎页(&amp;W)</translation>
    </message>
    <message>
        <source>&amp;Home Page</source>
        <translation>主页(&amp;H)</translation>
    </message>
    <message>
        <source>&amp;Help Contents</source>
        <translation>帮助内容(&amp;C)</translation>
    </message>
    <message>
        <source>Send &amp;Feedback</source>
        <translation>发送反馈(&amp;F)</translation>
    </message>
    <message>
        <source>Technical &amp;Support</source>
        <translation>技术支持(&amp;S)</translation>
    </message>
    <message>
        <source>&amp;About %1</source>
        <translation>关于 %1(&amp;A)</translation>
    </message>
    <message>
        <source>%1 is a folder, not a document.</source>
        <translation>%1 是文件夹，不是文档。</translation>
    </message>
    <message>
        <source>%1 is a pipe, device or socket, not a document.</source>
        <translation>%1 是管道、设备或套接字，不是文档。</translation>
    </message>
    <message>
        <source>%1 cannot be read: %2</source>
        <translation>无法读取 %1：%2</translation>
    </message>
    <message>
        <source>%1 is larger than %2 MiB, more than this window shows.</source>
        <translation>%1 大于 %2 MiB，超出此窗口可显示的大小。</translation>
    </message>
    <message>
        <source>The local server cannot listen: no bridge page</source>
        <translation>本地服务器无法监听：没有桥接页面</translation>
    </message>
    <message>
        <source>The bridge page closed the dialog: accepted</source>
        <translation>桥接页面关闭了对话框：接受</translation>
    </message>
    <message>
        <source>The bridge page closed the dialog: rejected</source>
        <translation>桥接页面关闭了对话框：拒绝</translation>
    </message>
    <message>
        <source>&amp;Bridge Page</source>
        <translation>桥接页面(&amp;B)</translation>
    </message>
</context>
</TS>
