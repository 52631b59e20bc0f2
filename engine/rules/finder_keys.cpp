#include "engine/rules/finder_keys.hpp"

namespace orvel::rules {

namespace {

bool isFinderKey(KeyCode code) {
    return code == key::returnKey || code == key::f2 || code == key::forwardDelete ||
           code == key::v || code == key::c || code == key::x;
}

RuleOutcome pasteCut(RuleContext& context) {
    if (!context.state.pendingFinderCut) return std::nullopt;
    context.services.log.line("📋 访达内触发标记粘贴：转为 Cmd+Option+V (移动文件)！");
    context.state.pendingFinderCut = false;
    return context.rewritten(key::v, context.logicalFlags | flag::option);
}

RuleOutcome forgetCut(RuleContext& context) {
    context.services.log.line("📄 访达内触发 Cmd+C：正常复制，取消剪切标记");
    context.state.pendingFinderCut = false;
    return std::nullopt;
}

RuleOutcome markCut(RuleContext& context) {
    context.services.log.line(
        "✂️ 访达内触发 Cmd+X：拦截并转为 Cmd+C (标记为剪切)");
    context.state.pendingFinderCut = true;
    return context.rewritten(key::c, context.logicalFlags);
}

RuleOutcome commandKeys(RuleContext& context) {
    const EventFlags flags = context.logicalFlags;
    if (!holds(flags, flag::command) ||
        holdsAny(flags, flag::shift | flag::control | flag::option)) {
        return std::nullopt;
    }
    switch (context.incoming.keyCode) {
        case key::v: return pasteCut(context);
        case key::c: return forgetCut(context);
        case key::x: return markCut(context);
        default: return std::nullopt;
    }
}

}  // namespace

RuleOutcome finderKeys(RuleContext& context) {
    const KeyCode code = context.incoming.keyCode;
    if (!isFinderKey(code) || !context.isFinderInFront()) return std::nullopt;
    const EventFlags flags = context.logicalFlags;

    if (code == key::returnKey && !holds(flags, flag::command)) {
        context.services.log.line("🚀 访达内触发 Enter：伪装成 Cmd+O (打开文件/进入文件夹)！");
        return context.rewritten(key::o, flag::command);
    }
    if (code == key::f2 && !holdsAny(flags, flag::control | flag::option | flag::command)) {
        context.services.log.line("🚀 访达内触发 F2：伪装成 原生 Enter (重命名文件)！");
        return context.rewritten(key::returnKey, flags);
    }
    if (code == key::forwardDelete) {
        context.services.log.line(
            "🗑 访达内捕获原生 Del 键：转为 Cmd+Backspace (移到废纸篓)");
        return context.rewritten(key::backspace, flag::command);
    }
    return commandKeys(context);
}

}  // namespace orvel::rules
