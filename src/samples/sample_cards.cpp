#include "samples/sample_cards.h"

#include "samples/sample_library.h"

namespace tabulon::samples {

namespace {

struct Operation {
  const wchar_t* no;
  const wchar_t* name;
  const wchar_t* content;
  const wchar_t* shop;
  const wchar_t* section;
  const wchar_t* machine;
  const wchar_t* tooling;
  const wchar_t* setup;
  const wchar_t* machining;
  const wchar_t* handling;
};

// A work step within an operation: its text and tools, no number and no times.
Operation step(const wchar_t* content, const wchar_t* tooling) {
  return {L"", L"", content, L"", L"", L"", tooling, L"", L"", L""};
}

std::vector<SampleRow> rowsOf(std::initializer_list<Operation> ops) {
  std::vector<SampleRow> rows;
  for (const Operation& op : ops)
    rows.push_back({{L"工序号", op.no},    {L"工序名称", op.name}, {L"工序内容", op.content}, {L"车间", op.shop},
                    {L"工段", op.section}, {L"设备", op.machine},  {L"工艺装备", op.tooling}, {L"准终", op.setup},
                    {L"机动", op.machining}, {L"辅助", op.handling}});
  return rows;
}

SampleRow head(const wchar_t* drawing, const wchar_t* name, const wchar_t* material, const wchar_t* blank,
               const wchar_t* size, const wchar_t* perBlank, const wchar_t* perUnit, const wchar_t* note) {
  return {{L"企业名称", L"星河减速机有限公司"}, {L"产品型号", L"XH-160"},  {L"产品名称", L"一级圆柱齿轮减速器"},
          {L"零件图号", drawing},             {L"零件名称", name},       {L"材料牌号", material},
          {L"毛坯种类", blank},               {L"毛坯外形尺寸", size},   {L"每毛坯件数", perBlank},
          {L"每台件数", perUnit},             {L"备注", note}};
}

SampleRow signOff() {
  return {{L"编制", L"王芳"},           {L"编制日期", L"2024-03-18"}, {L"审核", L"李强"},
          {L"审核日期", L"2024-03-20"}, {L"批准", L"赵敏"},           {L"批准日期", L"2024-03-22"},
          {L"会签", L"刘洋"},           {L"会签日期", L"2024-03-21"}};
}

}  // namespace

std::vector<SampleCardContent> SampleProcessCards() {
  SampleCardContent shaft;
  shaft.card = kProcessCard;
  shaft.part = L"输出轴 XH-01-01";
  shaft.blocks = {
      {kHeadBlock, {head(L"XH-01-01", L"输出轴", L"45", L"锻件", L"Φ60×235", L"1", L"1", L"调质")}},
      {kSignBlock, {signOff()}},
      {kRowBlock,
       rowsOf({
           {L"10", L"下料", L"圆钢Φ60下料，长度235", L"锻工", L"一", L"G4028锯床", L"V形块、钢直尺", L"10.0", L"2.5", L"1.0"},
           {L"20", L"锻造", L"自由锻成阶梯轴毛坯，各段留加工余量3~4mm，锻后空冷", L"锻工", L"二", L"750kg空气锤", L"型砧、卡钳", L"30.0", L"6.0", L"3.0"},
           {L"30", L"正火", L"正火处理：加热至860℃保温90min后空冷，硬度170~217HB", L"热处理", L"一", L"箱式炉RX3-45", L"料筐", L"60.0", L"45.0", L"5.0"},
           {L"40", L"粗车", L"夹左端外圆，按下列工步加工：", L"机加", L"一", L"CA6140", L"三爪卡盘", L"20.0", L"12.5", L"4.0"},
           step(L"(1) 车右端面见平", L"45°端面车刀"),
           step(L"(2) 钻中心孔B2.5", L"中心钻B2.5"),
           step(L"(3) 粗车Φ30、Φ36外圆，各留精车余量2mm", L"外圆粗车刀"),
           step(L"(4) 粗车Φ26、Φ20外圆，各留精车余量2mm", L"外圆粗车刀"),
           {L"50", L"粗车", L"调头夹右端外圆，按下列工步加工：", L"机加", L"一", L"CA6140", L"三爪卡盘", L"20.0", L"11.0", L"4.0"},
           step(L"(1) 车左端面，保证总长226", L"45°端面车刀"),
           step(L"(2) 钻中心孔B2.5", L"中心钻B2.5"),
           step(L"(3) 粗车Φ42轴肩及左端Φ30外圆，留余量2mm", L"外圆粗车刀"),
           {L"60", L"调质", L"调质处理220~250HB：淬火840℃水冷，回火560℃", L"热处理", L"二", L"井式炉RJ2-75", L"料筐、吊具", L"90.0", L"60.0", L"8.0"},
           {L"70", L"校直", L"冷校直，全长径向圆跳动不大于0.5", L"热处理", L"二", L"校直机", L"V形块、百分表", L"10.0", L"5.0", L"3.0"},
           {L"80", L"精车", L"修研两端中心孔，两顶尖装夹：", L"机加", L"一", L"CA6140", L"前后顶尖、鸡心夹头", L"25.0", L"18.0", L"6.0"},
           step(L"(1) 精车右端Φ20、Φ26外圆至图样尺寸", L"外圆精车刀、千分尺"),
           step(L"(2) 精车Φ30轴承位、Φ36齿轮位，留磨量0.3mm", L"外圆精车刀、千分尺"),
           step(L"(3) 车退刀槽2×0.5，倒角C1", L"切槽刀"),
           {L"90", L"精车", L"调头，两顶尖装夹：", L"机加", L"一", L"CA6140", L"前后顶尖、鸡心夹头", L"15.0", L"14.0", L"5.0"},
           step(L"(1) 精车Φ42轴肩至尺寸", L"外圆精车刀"),
           step(L"(2) 精车左端Φ30轴承位，留磨量0.3mm；倒角C1", L"外圆精车刀、千分尺"),
           {L"100", L"铣", L"V形块装夹，按下列工步加工：", L"机加", L"二", L"X5032", L"V形块、压板", L"30.0", L"8.5", L"4.0"},
           step(L"(1) 铣Φ36轴段键槽10N9，深5，长32", L"键槽铣刀Φ10"),
           step(L"(2) 保证键槽对称度0.03", L"槽宽塞规、对称度检具"),
           {L"110", L"铣", L"调头装夹：", L"机加", L"二", L"X5032", L"V形块、压板", L"15.0", L"6.0", L"3.0"},
           step(L"(1) 铣Φ20轴段键槽6N9，深3.5，长25", L"键槽铣刀Φ6、塞规"),
           {L"120", L"钳", L"去毛刺，修锐边，清理键槽内切屑", L"机加", L"三", L"钳工台", L"锉刀、油石", L"5.0", L"3.0", L"2.0"},
           {L"130", L"淬火", L"Φ30轴承位表面高频淬火，硬度HRC45~50，淬硬层深1~1.5mm", L"热处理", L"三", L"高频淬火机床", L"感应器", L"30.0", L"4.0", L"2.0"},
           {L"140", L"磨", L"两顶尖装夹：", L"机加", L"四", L"M1432B", L"前后顶尖", L"30.0", L"14.0", L"5.0"},
           step(L"(1) 粗、精磨两处Φ30k6轴承位至尺寸，Ra0.8", L"砂轮PA60KV、千分尺"),
           step(L"(2) 磨Φ36r6齿轮位至尺寸，Ra1.6", L"外径千分尺"),
           step(L"(3) 靠磨Φ42轴肩端面，端面圆跳动不大于0.012", L"百分表"),
           {L"150", L"检验", L"按图样全面检验：", L"质检", L"一", L"检验平台", L"千分尺、百分表", L"10.0", L"8.0", L"2.0"},
           step(L"(1) 检验各外圆尺寸及表面粗糙度", L"粗糙度样块"),
           step(L"(2) 检验径向圆跳动及键槽对称度", L"偏摆仪"),
           step(L"(3) 填写检验记录", L""),
           {L"160", L"清洗", L"清洗零件，吹干", L"装配", L"一", L"清洗机", L"清洗液", L"5.0", L"3.0", L"1.0"},
           {L"170", L"入库", L"涂防锈油，包装入库", L"装配", L"一", L"", L"防锈油", L"0.0", L"2.0", L"1.0"},
       })},
  };

  SampleCardContent gear;
  gear.card = kProcessCard;
  gear.part = L"大齿轮 XH-01-02";
  gear.blocks = {
      {kHeadBlock, {head(L"XH-01-02", L"大齿轮", L"40Cr", L"锻件", L"Φ130×45", L"1", L"1", L"m3 z38")}},
      {kSignBlock, {signOff()}},
      {kRowBlock,
       rowsOf({
           {L"10", L"锻造", L"模锻齿坯，锻后正火", L"锻工", L"二", L"摩擦压力机", L"锻模", L"40.0", L"4.0", L"2.0"},
           {L"20", L"粗车", L"粗车外圆、端面及内孔，各留余量1.5mm", L"机加", L"一", L"CA6140", L"三爪卡盘、车刀", L"20.0", L"15.0", L"4.0"},
           {L"30", L"调质", L"调质处理240~280HB", L"热处理", L"二", L"井式炉RJ2-75", L"料筐", L"90.0", L"60.0", L"8.0"},
           {L"40", L"精车", L"精车内孔Φ36H7至尺寸，精车端面及齿顶圆Φ120h8", L"机加", L"一", L"CA6140", L"三爪卡盘、内孔车刀、塞规", L"20.0", L"16.0", L"5.0"},
           {L"50", L"插", L"插键槽10JS9", L"机加", L"二", L"B5020", L"插刀、塞规", L"20.0", L"9.0", L"3.0"},
           {L"60", L"滚齿", L"滚齿m3 z38，留剃齿余量", L"机加", L"三", L"Y3150E", L"心轴、滚刀m3", L"40.0", L"35.0", L"6.0"},
           {L"70", L"剃齿", L"剃齿至7级精度", L"机加", L"三", L"Y4232C", L"心轴、剃齿刀", L"30.0", L"12.0", L"4.0"},
           {L"80", L"检验", L"检验齿轮精度及各部尺寸", L"质检", L"一", L"齿轮测量中心", L"公法线千分尺", L"10.0", L"15.0", L"3.0"},
       })},
  };
  return {shaft, gear};
}

}  // namespace tabulon::samples
