<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>Alarm_Error</name>
    <message>
        <source>Open Failed</source>
        <translation>打开失败</translation>
    </message>
    <message>
        <source>File does not exit</source>
        <translation>文件不存在</translation>
    </message>
    <message>
        <source>Failed opening xmlFile</source>
        <translation>无法打开XML文件</translation>
    </message>
    <message>
        <source>Alarm Current</source>
        <translation>当前警告</translation>
    </message>
    <message>
        <source>Alarm Name</source>
        <translation>警告名称</translation>
    </message>
    <message>
        <source>Alaem Cause</source>
        <translation>警告原因</translation>
    </message>
    <message>
        <source>Alarm Corrective</source>
        <translation>处理方法</translation>
    </message>
    <message>
        <source>Fault Current</source>
        <translation>当前故障</translation>
    </message>
    <message>
        <source>Fault Name</source>
        <translation>故障名称</translation>
    </message>
    <message>
        <source>Fault Cause</source>
        <translation>故障原因</translation>
    </message>
    <message>
        <source>Fault Corrective</source>
        <translation>处理方法</translation>
    </message>
    <message>
        <source>Fault
Reset</source>
        <translation>故障
复位</translation>
    </message>
    <message>
        <source>Alarm and Fault</source>
        <translation>警告与故障</translation>
    </message>
</context>
<context>
    <name>BitFieldFormView</name>
    <message>
        <source>Uint:</source>
        <translation>个位：</translation>
    </message>
    <message>
        <source>Ten:</source>
        <translation>十位：</translation>
    </message>
    <message>
        <source>Hundreds:</source>
        <translation>百位：</translation>
    </message>
    <message>
        <source>Thousands:</source>
        <translation>千位：</translation>
    </message>
    <message>
        <source>Ten, Uint:</source>
        <translation>十位、个位：</translation>
    </message>
    <message>
        <source>Thousands, Hundreds:</source>
        <translation>千位、百位：</translation>
    </message>
    <message>
        <source>Option:</source>
        <translation>选项：</translation>
    </message>
    <message>
        <source>Normal monitoring parameters</source>
        <translation>常规监视参数</translation>
    </message>
    <message>
        <source>This catalogue has no texts for the digit.</source>
        <translation>此参数表没有该位的说明。</translation>
    </message>
</context>
<context>
    <name>ChannelConfig</name>
    <message>
        <source>Data:</source>
        <translation>数据:</translation>
    </message>
    <message>
        <source>Type:</source>
        <translation>类型:</translation>
    </message>
</context>
<context>
    <name>ChannelPanels</name>
    <message>
        <source>CH1</source>
        <translation>CH1</translation>
    </message>
    <message>
        <source>CH2</source>
        <translation>CH2</translation>
    </message>
    <message>
        <source>CH3</source>
        <translation>CH3</translation>
    </message>
    <message>
        <source>CH4</source>
        <translation>CH4</translation>
    </message>
</context>
<context>
    <name>CommunicationSetting</name>
    <message>
        <source>Brennic_Soft Setting</source>
        <translation>Brennic_Soft 通信设置</translation>
    </message>
    <message>
        <source>Start Auto Detect</source>
        <translation>开始自动检测</translation>
    </message>
    <message>
        <source>Auto Detect</source>
        <translation>自动检测</translation>
    </message>
    <message>
        <source>Port :</source>
        <translation>端口：</translation>
    </message>
    <message>
        <source>BaudRate :</source>
        <translation>波特率：</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Ok</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Select Device :</source>
        <translation>选择设备：</translation>
    </message>
    <message>
        <source>On-Line</source>
        <translation>在线</translation>
    </message>
    <message>
        <source>Off-line</source>
        <translation>离线</translation>
    </message>
</context>
<context>
    <name>Control_Run</name>
    <message>
        <source>Position Mode</source>
        <translation>位置模式</translation>
    </message>
    <message>
        <source>Speed Mode</source>
        <translation>速度模式</translation>
    </message>
    <message>
        <source>Torque Mode</source>
        <translation>转矩模式</translation>
    </message>
    <message>
        <source>Control and Run</source>
        <translation>控制与运行</translation>
    </message>
    <message>
        <source>0:Position Mode</source>
        <translation>0:位置模式</translation>
    </message>
    <message>
        <source>1:Speed Mode</source>
        <translation>1:速度模式</translation>
    </message>
    <message>
        <source>2:Torque Mode</source>
        <translation>2:转矩模式</translation>
    </message>
    <message>
        <source>Read</source>
        <translation>读取</translation>
    </message>
    <message>
        <source>Control Method:</source>
        <translation>控制方式：</translation>
    </message>
    <message>
        <source>Source of position command</source>
        <translation>位置指令来源</translation>
    </message>
    <message>
        <source>0:Pulse command</source>
        <translation>0:脉冲指令</translation>
    </message>
    <message>
        <source>1:Internal number given</source>
        <translation>1:内部数字给定</translation>
    </message>
    <message>
        <source>2:Internal multi-segment position command</source>
        <translation>2:内部多段位置指令</translation>
    </message>
    <message>
        <source>Pulse command shape</source>
        <translation>脉冲指令形态</translation>
    </message>
    <message>
        <source>0:Pulse+Direction</source>
        <translation>0:脉冲+方向</translation>
    </message>
    <message>
        <source>1:Foward/Reverse pulse</source>
        <translation>1:正/反转脉冲</translation>
    </message>
    <message>
        <source>2:Orthogonal pulse</source>
        <translation>2:正交脉冲</translation>
    </message>
    <message>
        <source>Pulse command input terminal selection</source>
        <translation>脉冲指令输入端子选择</translation>
    </message>
    <message>
        <source>0:Low speed input terminal</source>
        <translation>0:低速输入端子</translation>
    </message>
    <message>
        <source>1:High speed input terminal</source>
        <translation>1:高速输入端子</translation>
    </message>
    <message>
        <source>External pulse minimum pulse width</source>
        <translation>外部脉冲最小脉宽</translation>
    </message>
    <message>
        <source>Internal position command set value</source>
        <translation>内部位置指令设定值</translation>
    </message>
    <message>
        <source>Electronic gear-numerator1</source>
        <translation>电子齿轮比分子1</translation>
    </message>
    <message>
        <source>Electronic gear-denominator</source>
        <translation>电子齿轮比分母</translation>
    </message>
    <message>
        <source>Source of speed command</source>
        <translation>速度指令来源</translation>
    </message>
    <message>
        <source>0:External analog inout(V_REF)</source>
        <translation>0:外部模拟量输入(V_REF)</translation>
    </message>
    <message>
        <source>1:Internal digtal given</source>
        <translation>1:内部数字给定</translation>
    </message>
    <message>
        <source>2:Internal multi-speed</source>
        <translation>2:内部多段速</translation>
    </message>
    <message>
        <source>Internal speed command set value</source>
        <translation>内部速度指令设定值</translation>
    </message>
    <message>
        <source>Speed command accelerates time</source>
        <translation>速度指令加速时间</translation>
    </message>
    <message>
        <source>Speed command decelerates time</source>
        <translation>速度指令减速时间</translation>
    </message>
    <message>
        <source>Maximum speed limit</source>
        <translation>最大速度限制</translation>
    </message>
    <message>
        <source>Source of torque command</source>
        <translation>转矩指令来源</translation>
    </message>
    <message>
        <source>0:External analog input(T_REF)</source>
        <translation>0:外部模拟量输入(T_REF)</translation>
    </message>
    <message>
        <source>1:Internal digital given</source>
        <translation>1:内部数字给定</translation>
    </message>
    <message>
        <source>2:Internal multi-torque</source>
        <translation>2:内部多段转矩</translation>
    </message>
    <message>
        <source>Internal torque command set value</source>
        <translation>内部转矩指令设定值</translation>
    </message>
    <message>
        <source>Torque mode speed limit source</source>
        <translation>转矩模式速度限制来源</translation>
    </message>
    <message>
        <source>0:Internal positive and negative speed limit</source>
        <translation>0:内部正负速度限制</translation>
    </message>
    <message>
        <source>1:Analog input V_REF for control</source>
        <translation>1:由模拟量输入V_REF控制</translation>
    </message>
    <message>
        <source>2:Select the first or second speed limit input with DI function</source>
        <translation>2:由DI功能选择第一或第二速度限制</translation>
    </message>
    <message>
        <source>Torque control forward speed limit value</source>
        <translation>转矩控制正向速度限制值</translation>
    </message>
    <message>
        <source>Torque control reverse speed limit value</source>
        <translation>转矩控制反向速度限制值</translation>
    </message>
    <message>
        <source>0:150ns(3.33M)</source>
        <translation>0:150ns(3.33M)</translation>
    </message>
    <message>
        <source>1:600ns(0.83M)</source>
        <translation>1:600ns(0.83M)</translation>
    </message>
    <message>
        <source>2:1.2us(416K)</source>
        <translation>2:1.2us(416K)</translation>
    </message>
    <message>
        <source>3:2.4us(208K)</source>
        <translation>3:2.4us(208K)</translation>
    </message>
    <message>
        <source>4:No filtering</source>
        <translation>4:不滤波</translation>
    </message>
    <message>
        <source>0:600ns(830K)</source>
        <translation>0:600ns(830K)</translation>
    </message>
    <message>
        <source>1:2.4us(208K)</source>
        <translation>1:2.4us(208K)</translation>
    </message>
    <message>
        <source>2:4.8us(104K)</source>
        <translation>2:4.8us(104K)</translation>
    </message>
    <message>
        <source>3:9.6us(52K)</source>
        <translation>3:9.6us(52K)</translation>
    </message>
    <message>
        <source>Failed to enable the servo 
Please select a DI to Enabled Servo</source>
        <translation>伺服使能失败
请选择一个DI设为伺服使能</translation>
    </message>
</context>
<context>
    <name>DI_DO_DataStatus</name>
    <message>
        <source>Open Failed</source>
        <translation>打开失败</translation>
    </message>
    <message>
        <source>File does not exist</source>
        <translation>文件不存在</translation>
    </message>
    <message>
        <source>Failed opening DIDOFunction XLM!</source>
        <translation>无法打开DIDO功能XML文件！</translation>
    </message>
    <message>
        <source>Data Input</source>
        <translation>数字输入</translation>
    </message>
    <message>
        <source>Data Output</source>
        <translation>数字输出</translation>
    </message>
    <message>
        <source>Sequence</source>
        <translation>序号</translation>
    </message>
    <message>
        <source>Symbol</source>
        <translation>符号</translation>
    </message>
    <message>
        <source>Function Description</source>
        <translation>功能说明</translation>
    </message>
    <message>
        <source>Status</source>
        <translation>状态</translation>
    </message>
    <message>
        <source>NO fuction</source>
        <translation>无功能</translation>
    </message>
</context>
<context>
    <name>FaultHistory</name>
    <message>
        <source>Historical Fault</source>
        <translation>历史故障</translation>
    </message>
    <message>
        <source>Code</source>
        <translation>代码</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>名称</translation>
    </message>
    <message>
        <source>Cauese</source>
        <translation>原因</translation>
    </message>
    <message>
        <source>Corrective</source>
        <translation>处理方法</translation>
    </message>
    <message>
        <source>Last Fault</source>
        <translation>最近一次故障</translation>
    </message>
    <message>
        <source>Historical Fault </source>
        <translation>历史故障</translation>
    </message>
</context>
<context>
    <name>GainTuning</name>
    <message>
        <source>Gain Tuning</source>
        <translation>增益调整</translation>
    </message>
    <message>
        <source>Inertia Identification</source>
        <translation>惯量辨识</translation>
    </message>
    <message>
        <source>Offline Inertia Identification</source>
        <translation>离线惯量辨识</translation>
    </message>
    <message>
        <source>Offline Inertia Identification Mode</source>
        <translation>离线惯量辨识模式</translation>
    </message>
    <message>
        <source>0 : Constant Torque Positive and Negative Triangular Wave</source>
        <translation>0：恒转矩正反三角波</translation>
    </message>
    <message>
        <source>1 : JOG Mode</source>
        <translation>1：JOG 点动模式</translation>
    </message>
    <message>
        <source>Online Inertia Identification</source>
        <translation>在线惯量辨识</translation>
    </message>
    <message>
        <source>Online Inertia Identification Mode</source>
        <translation>在线惯量辨识模式</translation>
    </message>
    <message>
        <source>0 : Online Closed</source>
        <translation>0：关闭在线辨识</translation>
    </message>
    <message>
        <source>1 : Elementary Invariant</source>
        <translation>1：基本不变</translation>
    </message>
    <message>
        <source>2 : Variation Slow</source>
        <translation>2：变化缓慢</translation>
    </message>
    <message>
        <source>3 : Variation Fast</source>
        <translation>3：变化剧烈</translation>
    </message>
    <message>
        <source>Parameter</source>
        <translation>参数</translation>
    </message>
    <message>
        <source> Range </source>
        <translation> 范围 </translation>
    </message>
    <message>
        <source> Unit </source>
        <translation> 单位 </translation>
    </message>
    <message>
        <source> Value </source>
        <translation> 数值 </translation>
    </message>
    <message>
        <source>Maximum speed</source>
        <translation>最大速度</translation>
    </message>
    <message>
        <source>Acceleration and deceleration time</source>
        <translation>加减速时间</translation>
    </message>
    <message>
        <source>Motor stroke</source>
        <translation>电机行程</translation>
    </message>
    <message>
        <source>Interval time</source>
        <translation>间隔时间</translation>
    </message>
    <message>
        <source>Inertia Ratio</source>
        <translation>惯量比</translation>
    </message>
    <message>
        <source>Calculated Value</source>
        <translation>计算值</translation>
    </message>
    <message>
        <source>Current Value</source>
        <translation>当前值</translation>
    </message>
    <message>
        <source>==&gt;</source>
        <translation>==&gt;</translation>
    </message>
    <message>
        <source>Gain Mode</source>
        <translation>增益模式</translation>
    </message>
    <message>
        <source>Gain Adjustment Mode</source>
        <translation>增益调整模式</translation>
    </message>
    <message>
        <source>0 : Manual adjustment</source>
        <translation>0：手动调整</translation>
    </message>
    <message>
        <source>1 : Rigid table</source>
        <translation>1：刚性表</translation>
    </message>
    <message>
        <source>Rigidity Grade</source>
        <translation>刚性等级</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>设定值</translation>
    </message>
    <message>
        <source>Position Loop Gain</source>
        <translation>位置环增益</translation>
    </message>
    <message>
        <source>Speed Loop Gain</source>
        <translation>速度环增益</translation>
    </message>
    <message>
        <source>Integral Time Constant of Speed Loop</source>
        <translation>速度环积分时间常数</translation>
    </message>
    <message>
        <source>Time Constant of Torque Instruction Filtering</source>
        <translation>转矩指令滤波时间常数</translation>
    </message>
    <message>
        <source>Speed Feedforward Gain</source>
        <translation>速度前馈增益</translation>
    </message>
    <message>
        <source>Time Constant of Speed Feedforward Filtering</source>
        <translation>速度前馈滤波时间常数</translation>
    </message>
    <message>
        <source>Vibration Suppression</source>
        <translation>振动抑制</translation>
    </message>
    <message>
        <source>Adaptive Notch Mode</source>
        <translation>自适应陷波模式</translation>
    </message>
    <message>
        <source>0 : Manual setting</source>
        <translation>0：手动设定</translation>
    </message>
    <message>
        <source>1 : Notch-filter3 adaptive setting</source>
        <translation>1：陷波器 3 自适应设定</translation>
    </message>
    <message>
        <source>2 : Notch-filter3 and Notch-filter4 adaptive setting</source>
        <translation>2：陷波器 3 和陷波器 4 自适应设定</translation>
    </message>
    <message>
        <source>3 : Adaptive setting</source>
        <translation>3：自适应设定</translation>
    </message>
    <message>
        <source>4 : Adaptive setting</source>
        <translation>4：自适应设定</translation>
    </message>
    <message>
        <source>Resonance Frequency</source>
        <translation>共振频率</translation>
    </message>
    <message>
        <source>Notch1 Frequency</source>
        <translation>陷波器 1 频率</translation>
    </message>
    <message>
        <source>Notch1 Width Grade</source>
        <translation>陷波器 1 宽度等级</translation>
    </message>
    <message>
        <source>Notch1 Deep Grade</source>
        <translation>陷波器 1 深度等级</translation>
    </message>
    <message>
        <source>Notch2 Frequency</source>
        <translation>陷波器 2 频率</translation>
    </message>
    <message>
        <source>Notch2 Width Grade</source>
        <translation>陷波器 2 宽度等级</translation>
    </message>
    <message>
        <source>Notch2 Deep Grade</source>
        <translation>陷波器 2 深度等级</translation>
    </message>
    <message>
        <source>Notch3 Frequency</source>
        <translation>陷波器 3 频率</translation>
    </message>
    <message>
        <source>Notch3 Width Grade</source>
        <translation>陷波器 3 宽度等级</translation>
    </message>
    <message>
        <source>Notch3 Deep Grade</source>
        <translation>陷波器 3 深度等级</translation>
    </message>
    <message>
        <source>Notch4 Frequency</source>
        <translation>陷波器 4 频率</translation>
    </message>
    <message>
        <source>Notch4 Width Grade</source>
        <translation>陷波器 4 宽度等级</translation>
    </message>
    <message>
        <source>Notch4 Deep Grade</source>
        <translation>陷波器 4 深度等级</translation>
    </message>
    <message>
        <source>Maxinum speed</source>
        <translation>最大速度</translation>
    </message>
    <message>
        <source>Notch-filter1 Frequency</source>
        <translation>陷波器 1 频率</translation>
    </message>
    <message>
        <source>Notch-filter1 Width Grade</source>
        <translation>陷波器 1 宽度等级</translation>
    </message>
    <message>
        <source>Notch-filter1 Deep Grade</source>
        <translation>陷波器 1 深度等级</translation>
    </message>
    <message>
        <source>Notch-filter2 Frequency</source>
        <translation>陷波器 2 频率</translation>
    </message>
    <message>
        <source>Notch-filter2 Width Grade</source>
        <translation>陷波器 2 宽度等级</translation>
    </message>
    <message>
        <source>Notch-filter2 Deep Grade</source>
        <translation>陷波器 2 深度等级</translation>
    </message>
    <message>
        <source>Notch-filter3 Frequency</source>
        <translation>陷波器 3 频率</translation>
    </message>
    <message>
        <source>Notch-filter3 Width Grade</source>
        <translation>陷波器 3 宽度等级</translation>
    </message>
    <message>
        <source>Notch-filter3 Deep Grade</source>
        <translation>陷波器 3 深度等级</translation>
    </message>
    <message>
        <source>Notch-filter4 Frequency</source>
        <translation>陷波器 4 频率</translation>
    </message>
    <message>
        <source>Notch-filter4 Width Grade</source>
        <translation>陷波器 4 宽度等级</translation>
    </message>
    <message>
        <source>Notch-filter4 Deep Grade</source>
        <translation>陷波器 4 深度等级</translation>
    </message>
    <message>
        <source>Calculated</source>
        <translation>计算值</translation>
    </message>
    <message>
        <source>Input value execteeds the range!
Range: </source>
        <translation>输入值超出范围！
范围：</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>File(F)</source>
        <translation>文件(F)</translation>
    </message>
    <message>
        <source>Edit(E)</source>
        <translation>编辑(E)</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>语言</translation>
    </message>
    <message>
        <source>View(V)</source>
        <translation>视图(V)</translation>
    </message>
    <message>
        <source>Window(W)</source>
        <translation>窗口(W)</translation>
    </message>
    <message>
        <source>Tools(T)</source>
        <translation>工具(T)</translation>
    </message>
    <message>
        <source>Help(H)</source>
        <translation>帮助(H)</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>保存</translation>
    </message>
    <message>
        <source>Print</source>
        <translation>打印</translation>
    </message>
    <message>
        <source>Exit</source>
        <translation>退出</translation>
    </message>
    <message>
        <source>Simplified Chinese</source>
        <translation>简体中文</translation>
    </message>
    <message>
        <source>English</source>
        <translation>英文</translation>
    </message>
    <message>
        <source>Communication</source>
        <translation>通信设置</translation>
    </message>
    <message>
        <source>Trial run</source>
        <translation>试运行</translation>
    </message>
    <message>
        <source>Status Monitor</source>
        <translation>状态监视</translation>
    </message>
    <message>
        <source>Parameter Monitor</source>
        <translation>参数监视</translation>
    </message>
    <message>
        <source>Parameter Editor</source>
        <translation>参数编辑</translation>
    </message>
    <message>
        <source>Gain Tuning</source>
        <translation>增益调整</translation>
    </message>
    <message>
        <source>Data Scope</source>
        <translation>数据示波器</translation>
    </message>
    <message>
        <source>Scope</source>
        <translation>示波器</translation>
    </message>
    <message>
        <source>Mechanical analysis</source>
        <translation>机械特性分析</translation>
    </message>
    <message>
        <source>Electroic cam</source>
        <translation>电子凸轮</translation>
    </message>
    <message>
        <source>Cascade</source>
        <translation>层叠</translation>
    </message>
    <message>
        <source>Title Horizontally</source>
        <translation>横向平铺</translation>
    </message>
    <message>
        <source>Title Vertically</source>
        <translation>纵向平铺</translation>
    </message>
    <message>
        <source>Minimize All</source>
        <translation>全部最小化</translation>
    </message>
    <message>
        <source>Simulation</source>
        <translation>仿真</translation>
    </message>
    <message>
        <source>Calculation</source>
        <translation>计算器</translation>
    </message>
    <message>
        <source>About...</source>
        <translation>关于...</translation>
    </message>
    <message>
        <source>Software Guide</source>
        <translation>软件使用说明</translation>
    </message>
    <message>
        <source>Run</source>
        <translation>运行</translation>
    </message>
    <message>
        <source>Off-Line</source>
        <translation>离线</translation>
    </message>
    <message>
        <source>Exit the application</source>
        <translation>退出应用程序</translation>
    </message>
    <message>
        <source>Open Parameter Editor</source>
        <translation>打开参数编辑窗口</translation>
    </message>
    <message>
        <source>Communication Lost.</source>
        <translation>通信中断。</translation>
    </message>
    <message>
        <source>Please close &quot;Trial Run&quot; window frist</source>
        <translation>请先关闭“试运行”窗口</translation>
    </message>
    <message>
        <source>Please close &quot;Scope&quot; window frist</source>
        <translation>请先关闭“示波器”窗口</translation>
    </message>
    <message>
        <source>Warnig</source>
        <translation>警告</translation>
    </message>
    <message>
        <source>The language has been modified.</source>
        <translation>语言已更改。</translation>
    </message>
    <message>
        <source>Do you want to restart application?</source>
        <translation>是否重新启动应用程序？</translation>
    </message>
</context>
<context>
    <name>Measurement</name>
    <message>
        <source>Min:</source>
        <translation>最小值:</translation>
    </message>
    <message>
        <source>Max:</source>
        <translation>最大值:</translation>
    </message>
    <message>
        <source>Ave:</source>
        <translation>平均值:</translation>
    </message>
    <message>
        <source>∆X:</source>
        <translation>∆X:</translation>
    </message>
    <message>
        <source>∆Y:</source>
        <translation>∆Y:</translation>
    </message>
</context>
<context>
    <name>ParameterBatch</name>
    <message>
        <source>Batch Parameter Modification</source>
        <translation>参数批量修改</translation>
    </message>
    <message>
        <source>Function code</source>
        <translation>功能码</translation>
    </message>
    <message>
        <source>Real</source>
        <translation>实际值</translation>
    </message>
    <message>
        <source>default</source>
        <translation>未读取</translation>
    </message>
</context>
<context>
    <name>ParameterEditor</name>
    <message>
        <source>Parameter Editor</source>
        <translation>参数编辑</translation>
    </message>
    <message>
        <source>Reading...</source>
        <translation>正在读取...</translation>
    </message>
    <message>
        <source>Parameters reading completed</source>
        <translation>参数读取完成</translation>
    </message>
    <message>
        <source>Writing...</source>
        <translation>正在写入...</translation>
    </message>
    <message>
        <source>Parameters writing completed</source>
        <translation>参数写入完成</translation>
    </message>
    <message>
        <source>Request Timeout!</source>
        <translation>请求超时！</translation>
    </message>
    <message>
        <source>Write Timeout!</source>
        <translation>写入超时！</translation>
    </message>
    <message>
        <source>Note: Double-click the Value can be call out the Parameter Setting Helper</source>
        <translation>注意：双击“当前值”可弹出参数设置助手</translation>
    </message>
    <message>
        <source>&amp;Open...</source>
        <translation>打开(&amp;O)...</translation>
    </message>
    <message>
        <source>Open an existing file</source>
        <translation>打开已有文件</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>保存(&amp;S)</translation>
    </message>
    <message>
        <source>Save the document to disk</source>
        <translation>将文档保存到磁盘</translation>
    </message>
    <message>
        <source>&amp;Read Parameters</source>
        <translation>读取参数(&amp;R)</translation>
    </message>
    <message>
        <source>Read Parameters</source>
        <translation>读取参数</translation>
    </message>
    <message>
        <source>&amp;Write Parameters</source>
        <translation>写入参数(&amp;W)</translation>
    </message>
    <message>
        <source>Write Parameters</source>
        <translation>写入参数</translation>
    </message>
    <message>
        <source>Print</source>
        <translation>打印</translation>
    </message>
    <message>
        <source>PrintPreview</source>
        <translation>打印预览</translation>
    </message>
    <message>
        <source>edit parameter</source>
        <translation>参数批量修改</translation>
    </message>
    <message>
        <source>Read-only</source>
        <translation>只读</translation>
    </message>
    <message>
        <source>Set When Servo OFF</source>
        <translation>伺服OFF时设定</translation>
    </message>
    <message>
        <source>Valid Afert Re-power on</source>
        <translation>重新上电后有效</translation>
    </message>
    <message>
        <source>Volatile Parameter</source>
        <translation>掉电不保存参数</translation>
    </message>
    <message>
        <source>Hex data,modified by bit</source>
        <translation>十六进制数据，按位修改</translation>
    </message>
    <message>
        <source>open parameter file</source>
        <translation>打开参数文件</translation>
    </message>
    <message>
        <source>save parameter file</source>
        <translation>保存参数文件</translation>
    </message>
    <message>
        <source>read parameter</source>
        <translation>读取参数</translation>
    </message>
    <message>
        <source>write parameter file</source>
        <translation>写入参数</translation>
    </message>
    <message>
        <source>newRow</source>
        <translation>新增行</translation>
    </message>
    <message>
        <source>deleteRow</source>
        <translation>删除行</translation>
    </message>
    <message>
        <source>selectAll</source>
        <translation>全选</translation>
    </message>
    <message>
        <source>deselectAll</source>
        <translation>全不选</translation>
    </message>
    <message>
        <source>Save csv file</source>
        <translation>保存csv文件</translation>
    </message>
    <message>
        <source>CSV File(*.csv)</source>
        <translation>CSV文件(*.csv)</translation>
    </message>
    <message>
        <source>Save file failed!</source>
        <translation>保存文件失败！</translation>
    </message>
    <message>
        <source>Save file completed</source>
        <translation>文件保存完成</translation>
    </message>
    <message>
        <source>open csv file</source>
        <translation>打开csv文件</translation>
    </message>
    <message>
        <source>Parameter File(*.csv)</source>
        <translation>参数文件(*.csv)</translation>
    </message>
    <message>
        <source>Open file failed!</source>
        <translation>打开文件失败！</translation>
    </message>
    <message>
        <source>Save scp file</source>
        <translation>保存scp文件</translation>
    </message>
    <message>
        <source>Parameter File(*.scp);;CSV File(*.csv)</source>
        <translation>参数文件(*.scp);;CSV文件(*.csv)</translation>
    </message>
    <message>
        <source>open scp file</source>
        <translation>打开scp文件</translation>
    </message>
    <message>
        <source>Parameter File(*.scp)</source>
        <translation>参数文件(*.scp)</translation>
    </message>
    <message>
        <source>createPDF...</source>
        <translation>生成PDF...</translation>
    </message>
    <message>
        <source>Create PDF</source>
        <translation>生成PDF</translation>
    </message>
    <message>
        <source>transform...</source>
        <translation>正在转换...</translation>
    </message>
    <message>
        <source>transform</source>
        <translation>转换</translation>
    </message>
    <message>
        <source>Create Parameter PDF</source>
        <translation>生成参数PDF</translation>
    </message>
    <message>
        <source>Finish create Parameter PDF </source>
        <translation>参数PDF生成完成 </translation>
    </message>
</context>
<context>
    <name>ParameterGroups</name>
    <message>
        <source>  -Pn-0XX Basic parameters</source>
        <translation>  -Pn-0XX 基本参数</translation>
    </message>
    <message>
        <source>  -Pn-1XX Basic control parameters</source>
        <translation>  -Pn-1XX 基本控制参数</translation>
    </message>
    <message>
        <source>  -Pn-2XX DI/DO parameters</source>
        <translation>  -Pn-2XX DI/DO参数</translation>
    </message>
    <message>
        <source>  -Pn-3XX Position Control parameters</source>
        <translation>  -Pn-3XX 位置控制参数</translation>
    </message>
    <message>
        <source>  -Pn-4XX Speed control parameters</source>
        <translation>  -Pn-4XX 速度控制参数</translation>
    </message>
    <message>
        <source>  -Pn-5XX Torque control parameters</source>
        <translation>  -Pn-5XX 转矩控制参数</translation>
    </message>
    <message>
        <source>  -Pn-6XX Gain class parameters</source>
        <translation>  -Pn-6XX 增益类参数</translation>
    </message>
    <message>
        <source>  -Pn-7XX Full closed loop function parameters</source>
        <translation>  -Pn-7XX 全闭环功能参数</translation>
    </message>
    <message>
        <source>  -Pn-8XX Failure and protection parameters</source>
        <translation>  -Pn-8XX 故障与保护参数</translation>
    </message>
    <message>
        <source>  -Pn-9XX Communication parameters</source>
        <translation>  -Pn-9XX 通信参数</translation>
    </message>
    <message>
        <source>  -Pn-AXX Multi-segment displacement group parameters</source>
        <translation>  -Pn-AXX 多段位移组参数</translation>
    </message>
    <message>
        <source>  -Pn-BXX Multi-segment speed group parameters</source>
        <translation>  -Pn-BXX 多段速度组参数</translation>
    </message>
</context>
<context>
    <name>ParameterSettingHelper</name>
    <message>
        <source>Parameter Setting Helper</source>
        <translation>参数设置助手</translation>
    </message>
    <message>
        <source>Parameter Name</source>
        <translation>参数编号</translation>
    </message>
    <message>
        <source>Uint</source>
        <translation>单位</translation>
    </message>
    <message>
        <source>Minimum ~ Maximum</source>
        <translation>最小值 ~ 最大值</translation>
    </message>
    <message>
        <source>Default</source>
        <translation>默认值</translation>
    </message>
    <message>
        <source>16/32bit</source>
        <translation>16/32位</translation>
    </message>
    <message>
        <source>Read Only</source>
        <translation>只读</translation>
    </message>
    <message>
        <source>Set When Servo OFF</source>
        <translation>伺服OFF时设定</translation>
    </message>
    <message>
        <source>Valid After Re-power on</source>
        <translation>重新上电后有效</translation>
    </message>
    <message>
        <source>Volatile Parameter</source>
        <translation>掉电不保存参数</translation>
    </message>
    <message>
        <source>Hex data,modified by bit</source>
        <translation>十六进制数据，按位修改</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>当前值</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>确定</translation>
    </message>
    <message>
        <source>Write RAM</source>
        <translation>写入RAM</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Write to Servo</source>
        <translation>写入伺服</translation>
    </message>
    <message>
        <source>Write EEPROM</source>
        <translation>写入EEPROM</translation>
    </message>
    <message>
        <source>File does not exist</source>
        <translation>文件不存在</translation>
    </message>
    <message>
        <source>Failed opening parameter XML!</source>
        <translation>打开参数XML文件失败！</translation>
    </message>
    <message>
        <source>Open Failed</source>
        <translation>打开失败</translation>
    </message>
    <message>
        <source>Input value execteeds the range!
 
Max:%1</source>
        <translation>输入值超出范围！
 
最大值：%1</translation>
    </message>
    <message>
        <source>Input value execteeds the range!
 
Min:%1</source>
        <translation>输入值超出范围！
 
最小值：%1</translation>
    </message>
    <message>
        <source>Paramter Value Input Error!</source>
        <translation>参数值输入错误！</translation>
    </message>
    <message>
        <source>32bit</source>
        <translation>32位</translation>
    </message>
    <message>
        <source>16bit</source>
        <translation>16位</translation>
    </message>
</context>
<context>
    <name>ParameterTable</name>
    <message>
        <source>Read Current Parameter</source>
        <translation>读取当前参数</translation>
    </message>
    <message>
        <source>Write Current Parameter</source>
        <translation>写入当前参数</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>当前值</translation>
    </message>
    <message>
        <source>Uint</source>
        <translation>单位</translation>
    </message>
    <message>
        <source>Min</source>
        <translation>最小值</translation>
    </message>
    <message>
        <source>Max</source>
        <translation>最大值</translation>
    </message>
    <message>
        <source>Default</source>
        <translation>默认值</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>参数名称</translation>
    </message>
    <message>
        <source>Function Code</source>
        <translation>功能码</translation>
    </message>
    <message>
        <source>Reserved</source>
        <translation>保留</translation>
    </message>
    <message>
        <source>Fail to connect to the device via USB!</source>
        <translation>无法通过USB连接到设备！</translation>
    </message>
</context>
<context>
    <name>Parameter_Monitor</name>
    <message>
        <source>Monitor</source>
        <translation>监视</translation>
    </message>
    <message>
        <source>Parameter Monitor</source>
        <translation>参数监视</translation>
    </message>
    <message>
        <source>Fault History</source>
        <translation>历史故障</translation>
    </message>
</context>
<context>
    <name>Parameter_Status</name>
    <message>
        <source>Open Failed</source>
        <translation>打开失败</translation>
    </message>
    <message>
        <source>File does not exist</source>
        <translation>文件不存在</translation>
    </message>
    <message>
        <source>Failed opening parameter XML!</source>
        <translation>无法打开参数XML文件！</translation>
    </message>
    <message>
        <source>Parameter</source>
        <translation>参数</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>说明</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>单位</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>数值</translation>
    </message>
    <message>
        <source>Status Parameter</source>
        <translation>状态参数</translation>
    </message>
</context>
<context>
    <name>Plotter</name>
    <message>
        <source>SaveWaveImage</source>
        <translation>保存波形图像</translation>
    </message>
    <message>
        <source>Save  Wave Image</source>
        <translation>保存波形图像</translation>
    </message>
    <message>
        <source>Succeed Save Wave Image </source>
        <translation>波形图像保存成功</translation>
    </message>
    <message>
        <source>Revocation</source>
        <translation>撤销</translation>
    </message>
    <message>
        <source>Recover</source>
        <translation>重做</translation>
    </message>
    <message>
        <source>Failed to calculate the FFT 
Please Turn on the X-Axis measurement</source>
        <translation>无法计算 FFT 
请打开 X 轴测量</translation>
    </message>
</context>
<context>
    <name>QFileDialog</name>
    <message>
        <source>%1 already exists.
Do you want to replace it?</source>
        <translation>%1 已存在。
要替换它吗？</translation>
    </message>
</context>
<context>
    <name>RigidityChart</name>
    <message>
        <source>Grade</source>
        <translation>等级</translation>
    </message>
</context>
<context>
    <name>Scope</name>
    <message>
        <source>The samples could not all be written to disk, the scope data files are incomplete!</source>
        <translation>采样数据未能全部写入磁盘，示波器数据文件不完整！</translation>
    </message>
    <message>
        <source>Open Scope File Failed!</source>
        <translation>打开示波器文件失败！</translation>
    </message>
    <message>
        <source>Open Scope Data File Error!</source>
        <translation>打开示波器数据文件出错！</translation>
    </message>
    <message>
        <source>Save File</source>
        <translation>保存文件</translation>
    </message>
    <message>
        <source>The record already lies in this folder, and the next run deletes it. Please choose another folder.</source>
        <translation>录波数据已在此文件夹中，且下次运行时会被删除，请选择其他文件夹。</translation>
    </message>
    <message>
        <source>Successfully save scope data file!</source>
        <translation>示波器数据文件保存成功！</translation>
    </message>
    <message>
        <source>Not saved, since the name is taken or the folder takes no files:</source>
        <translation>以下文件未保存（同名文件已存在或文件夹不可写）：</translation>
    </message>
    <message>
        <source>Open txt file</source>
        <translation>打开txt文件</translation>
    </message>
    <message>
        <source>Parameter File(*.txt)</source>
        <translation>参数文件(*.txt)</translation>
    </message>
</context>
<context>
    <name>ScopeSidePanel</name>
    <message>
        <source>Properties</source>
        <translation>属性</translation>
    </message>
    <message>
        <source>Show Grid Line</source>
        <translation>显示网格线</translation>
    </message>
    <message>
        <source>Auto adjust the scope display</source>
        <translation>自动调整示波器显示</translation>
    </message>
    <message>
        <source>Keep current max/min value next start</source>
        <translation>下次启动时保持当前最大/最小值</translation>
    </message>
    <message>
        <source>When display all data in sceen,</source>
        <translation>显示全部数据时，</translation>
    </message>
    <message>
        <source>channels use individual coordinate</source>
        <translation>各通道使用独立坐标</translation>
    </message>
    <message>
        <source>channels use the same coordinate</source>
        <translation>各通道使用相同坐标</translation>
    </message>
    <message>
        <source>CH1</source>
        <translation>CH1</translation>
    </message>
    <message>
        <source>CH2</source>
        <translation>CH2</translation>
    </message>
    <message>
        <source>CH3</source>
        <translation>CH3</translation>
    </message>
    <message>
        <source>CH4</source>
        <translation>CH4</translation>
    </message>
    <message>
        <source>zoom Time-Axis</source>
        <translation>缩放时间轴</translation>
    </message>
    <message>
        <source>Zoom Value-axis</source>
        <translation>缩放数值轴</translation>
    </message>
    <message>
        <source>Fine Tuning</source>
        <translation>微调</translation>
    </message>
    <message>
        <source>Enable Fine Tuning</source>
        <translation>启用微调</translation>
    </message>
    <message>
        <source>Stop Condition</source>
        <translation>停止条件</translation>
    </message>
    <message>
        <source>Enable Stop Condition</source>
        <translation>启用停止条件</translation>
    </message>
    <message>
        <source>Channel</source>
        <translation>通道</translation>
    </message>
    <message>
        <source>Operation</source>
        <translation>运算</translation>
    </message>
    <message>
        <source>Stop Value:</source>
        <translation>停止值:</translation>
    </message>
    <message>
        <source>Condition satisfied,last</source>
        <translation>条件满足后持续</translation>
    </message>
</context>
<context>
    <name>ScopeToolBar</name>
    <message>
        <source>Open a SCP File</source>
        <translation>打开SCP文件</translation>
    </message>
    <message>
        <source>Save as a SCP File</source>
        <translation>保存为SCP文件</translation>
    </message>
    <message>
        <source>Print Screen</source>
        <translation>截屏</translation>
    </message>
    <message>
        <source>Change Backgrond Color</source>
        <translation>更改背景颜色</translation>
    </message>
    <message>
        <source>Zoom in</source>
        <translation>放大</translation>
    </message>
    <message>
        <source>Zoom Out</source>
        <translation>缩小</translation>
    </message>
    <message>
        <source>Show all data in screen</source>
        <translation>显示全部数据</translation>
    </message>
    <message>
        <source>Show all data in screen, and adjust max/min value automatically</source>
        <translation>显示全部数据并自动调整最大/最小值</translation>
    </message>
    <message>
        <source>Shift Left</source>
        <translation>左移</translation>
    </message>
    <message>
        <source>Shift Right</source>
        <translation>右移</translation>
    </message>
    <message>
        <source>Shift Up</source>
        <translation>上移</translation>
    </message>
    <message>
        <source>Shift Down</source>
        <translation>下移</translation>
    </message>
    <message>
        <source>X-Axis measurement</source>
        <translation>X轴测量</translation>
    </message>
    <message>
        <source>Y-Axis measurement</source>
        <translation>Y轴测量</translation>
    </message>
    <message>
        <source>Clear Screen</source>
        <translation>清屏</translation>
    </message>
    <message>
        <source>FFT</source>
        <translation>FFT</translation>
    </message>
    <message>
        <source>Run</source>
        <translation>运行</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
</context>
<context>
    <name>ScopeWindow</name>
    <message>
        <source>Scope</source>
        <translation>示波器</translation>
    </message>
    <message>
        <source>Open Failed</source>
        <translation>打开失败</translation>
    </message>
    <message>
        <source>File does not exist</source>
        <translation>文件不存在</translation>
    </message>
    <message>
        <source>Failed opening parameter XML!</source>
        <translation>打开参数XML文件失败！</translation>
    </message>
</context>
<context>
    <name>SerialPort</name>
    <message>
        <source>Fail to connect to the device via 
Read Modbus Failed!</source>
        <translation>连接设备失败：
读取Modbus失败！</translation>
    </message>
</context>
<context>
    <name>SpectrumWindow</name>
    <message>
        <source>Fast Fourier Transform</source>
        <translation>快速傅里叶变换</translation>
    </message>
</context>
<context>
    <name>TrialRun</name>
    <message>
        <source>JOG speed value</source>
        <translation>JOG速度值</translation>
    </message>
    <message>
        <source>JOG acceleration time</source>
        <translation>JOG加速时间</translation>
    </message>
    <message>
        <source>JOG deceleration time</source>
        <translation>JOG减速时间</translation>
    </message>
    <message>
        <source>JOG torque limit</source>
        <translation>JOG转矩限制</translation>
    </message>
    <message>
        <source>Moving Distance</source>
        <translation>移动距离</translation>
    </message>
    <message>
        <source>Maximum running Speed</source>
        <translation>最大运行速度</translation>
    </message>
    <message>
        <source>Acceleration Time</source>
        <translation>加减速时间</translation>
    </message>
    <message>
        <source>Wait Time</source>
        <translation>等待时间</translation>
    </message>
    <message>
        <source>Overload protection gain</source>
        <translation>过载保护增益</translation>
    </message>
    <message>
        <source>Overspeed protection threshold</source>
        <translation>超速保护阈值</translation>
    </message>
    <message>
        <source>Position deviation excessive threshold</source>
        <translation>位置偏差过大阈值</translation>
    </message>
    <message>
        <source>Trial Run</source>
        <translation>试运行</translation>
    </message>
    <message>
        <source>Paramter Value Input Error!</source>
        <translation>参数值输入错误！</translation>
    </message>
    <message>
        <source>Input value execteeds the range!
 
Max:%1</source>
        <translation>输入值超出范围！
 
最大值:%1</translation>
    </message>
    <message>
        <source>Input value execteeds the range!
 
Min:%1</source>
        <translation>输入值超出范围！
 
最小值:%1</translation>
    </message>
</context>
<context>
    <name>TrialRunPage</name>
    <message>
        <source>Parameters</source>
        <translation>参数</translation>
    </message>
    <message>
        <source>Range</source>
        <translation>范围</translation>
    </message>
    <message>
        <source>Uint</source>
        <translation>单位</translation>
    </message>
    <message>
        <source>Value</source>
        <translation>值</translation>
    </message>
    <message>
        <source>Frist Step</source>
        <translation>第一步</translation>
    </message>
    <message>
        <source>Run JOG</source>
        <translation>JOG运行</translation>
    </message>
    <message>
        <source>Second Step</source>
        <translation>第二步</translation>
    </message>
    <message>
        <source>Position Pnformation(Uint: PUU)</source>
        <translation>位置信息(单位: PUU)</translation>
    </message>
    <message>
        <source>Third Step</source>
        <translation>第三步</translation>
    </message>
    <message>
        <source>Position Operation</source>
        <translation>位置运行</translation>
    </message>
    <message>
        <source>Servo ON</source>
        <translation>伺服使能</translation>
    </message>
    <message>
        <source>Servo OFF</source>
        <translation>伺服关闭</translation>
    </message>
    <message>
        <source>Forward: the motor turns while the button is held</source>
        <translation>正转：按住按钮时电机转动</translation>
    </message>
    <message>
        <source>Rollback: the motor turns while the button is held</source>
        <translation>反转：按住按钮时电机转动</translation>
    </message>
    <message>
        <source>Forward limit position</source>
        <translation>正向极限位置</translation>
    </message>
    <message>
        <source>Current position</source>
        <translation>当前位置</translation>
    </message>
    <message>
        <source>Rollback limit position</source>
        <translation>反向极限位置</translation>
    </message>
    <message>
        <source>Once</source>
        <translation>单次</translation>
    </message>
    <message>
        <source>Continuous</source>
        <translation>连续</translation>
    </message>
    <message>
        <source>Forward: one move for each press</source>
        <translation>正向：每按一次移动一次</translation>
    </message>
    <message>
        <source>Rollback: one move for each press</source>
        <translation>反向：每按一次移动一次</translation>
    </message>
    <message>
        <source>Run and pause</source>
        <translation>运行与暂停</translation>
    </message>
    <message>
        <source>JOG RUN</source>
        <translation>JOG运行</translation>
    </message>
    <message>
        <source>Position RUN</source>
        <translation>位置运行</translation>
    </message>
</context>
<context>
    <name>io_control</name>
    <message>
        <source>Open Failed</source>
        <translation>打开失败</translation>
    </message>
    <message>
        <source>File does not exist</source>
        <translation>文件不存在</translation>
    </message>
    <message>
        <source>Failed opening DIDOFunction XLM!</source>
        <translation>无法打开DIDO功能XML文件！</translation>
    </message>
    <message>
        <source>I/O Control</source>
        <translation>I/O控制</translation>
    </message>
    <message>
        <source>0:External hardware terminal control</source>
        <translation>0:外部硬件端子控制</translation>
    </message>
    <message>
        <source>1:Auxiliary input control</source>
        <translation>1:辅助输入控制</translation>
    </message>
    <message>
        <source>0:Internal program control</source>
        <translation>0:内部程序控制</translation>
    </message>
    <message>
        <source>1:Auxiliary output control</source>
        <translation>1:辅助输出控制</translation>
    </message>
    <message>
        <source>DI control</source>
        <translation>DI控制</translation>
    </message>
    <message>
        <source>DO control</source>
        <translation>DO控制</translation>
    </message>
</context>
</TS>
