// SPDX-License-Identifier: MIT
#include "QuorvellCore/live/prompt/PromptSections.h"

#include "QuorvellCore/live/prompt/QuorvellPrompt.h"
#include "QuorvellCore/text/Characters.h"

#include <algorithm>

namespace quorvell::prompt_section {

namespace {

constexpr std::size_t longestName = 60; ///< User-perceived characters.
constexpr std::string_view nameMark = "{name}";
constexpr std::string_view familyMark = "{family}";

/// Names come from the settings: one line, so that none can open a section of its own.
std::string oneLine(std::string_view name)
{
    std::string line = firstCharacters(trimmed(name), longestName);
    std::replace_if(
        line.begin(), line.end(), [](char letter) { return letter == '\n' || letter == '\r'; }, ' ');
    return line;
}

/// The texts stand in the sources in lines of readable length; a line that begins no paragraph and no list entry
/// continues the one before it.
bool beginsSomething(std::string_view line)
{
    const bool isNumbered = line.size() > 2 && line[0] >= '1' && line[0] <= '9' && line[1] == '.';
    return isNumbered || line.empty() || line.starts_with("- ");
}

std::string unwrapped(std::string_view text)
{
    std::string result;
    bool isFresh = true;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string line = trimmed(text.substr(0, end));
        const bool continues = !isFresh && !beginsSomething(line);
        if (!result.empty())
            result += continues ? ' ' : '\n';
        result += line;
        isFresh = line.empty();
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return result;
}

} // namespace

std::string userName(const PromptOptions& options)
{
    const std::string name = oneLine(options.userName);
    return name.empty() ? "your friend" : name;
}

std::string filled(std::string_view text, const PromptOptions& options)
{
    const std::string name = userName(options);
    const std::string family = oneLine(options.familyName);
    std::string result;
    while (!text.empty()) {
        const std::size_t mark = std::min(text.find(nameMark), text.find(familyMark));
        result += text.substr(0, mark);
        if (mark == std::string_view::npos)
            break;
        text.remove_prefix(mark);
        const bool isName = text.starts_with(nameMark);
        result += isName ? name : family;
        text.remove_prefix(isName ? nameMark.size() : familyMark.size());
    }
    return result;
}

std::string paragraphs(std::string_view body, const PromptOptions& options)
{
    return filled(unwrapped(trimmed(body)), options);
}

std::string section(std::string_view heading, std::string_view body, const PromptOptions& options)
{
    return "# " + filled(heading, options) + "\n\n" + paragraphs(body, options);
}

std::string joined(std::initializer_list<std::string> texts)
{
    std::string result;
    for (const std::string& text : texts) {
        if (!text.empty())
            result += (result.empty() ? "" : "\n\n") + text;
    }
    return result;
}

std::string lookingThingsUp(const PromptOptions& options)
{
    const std::string apps = options.tools.connectedApps ? QuorvellPrompt::connectedAppsGuide(options) : std::string();
    if (options.tools.webLookup)
        return joined({QuorvellPrompt::lookUpGuide(options), apps});
    return apps.empty() ? std::string() : "# Looking things up\n\n" + apps;
}

std::string whereAndWhen(const PromptOptions& options)
{
    const std::string text = trimmed(options.whereAndWhen);
    return text.empty() ? std::string() : "# Where and when\n\n" + text;
}

} // namespace quorvell::prompt_section

namespace quorvell {

using namespace prompt_section;

namespace {

/// Everything that whoever holds the tools must know about using them.
std::string toolSections(const PromptOptions& options)
{
    return joined({QuorvellPrompt::taskGuide(options),
        options.tools.nextStep ? QuorvellPrompt::nextStepGuide(options) : std::string(),
        QuorvellPrompt::notebookGuide(options), lookingThingsUp(options), keepingSafe(options), safetyTools(options),
        whenStuck(options)});
}

} // namespace

std::string QuorvellPrompt::systemInstruction(const PromptOptions& options)
{
    const std::string opening = joined({persona(options), howYouSound(options), typedGuide(options)});
    if (options.toolHolder == PromptOptions::ToolHolder::voice)
        return joined({opening, toolSections(options), prompt_section::whereAndWhen(options)});
    return joined({opening, yourHelper(options), howVoiceHelps(options), helpModes(options), keepingSafe(options),
        whenStuck(options), prompt_section::whereAndWhen(options)});
}

std::string QuorvellPrompt::liveBackendInstructions(const PromptOptions& options)
{
    return joined({yourPart(options), whoYouHelp(options), toolSections(options), backendReplyGuide(options),
        prompt_section::whereAndWhen(options)});
}

std::string QuorvellPrompt::textBackendInstructions(const PromptOptions& options)
{
    return joined({persona(options), section("How you sound", typedGuide(options), options), toolSections(options),
        prompt_section::whereAndWhen(options)});
}

std::string QuorvellPrompt::persona(const PromptOptions& options)
{
    return joined({whoYouAre(options), whoYouHelp(options)});
}

std::string QuorvellPrompt::taskGuide(const PromptOptions& options)
{
    return joined({howYouHelp(options), helpModes(options), modeTools(options), workingWell(options),
        longerTasks(options), localExecution(options), goingFast(options)});
}

} // namespace quorvell
