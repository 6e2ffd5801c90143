// SPDX-License-Identifier: MIT
#include "Quorvell/tools/notebook/PrivateFacts.h"

#include "QuorvellCore/text/TextMatch.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <vector>

namespace quorvell {

namespace {

/// Words that a secret follows or precedes. Normalised, as the fact is before it is looked at.
constexpr std::array secretWords{"password", "passcode", "passphrase", "passkey", "pin", "pin code", "puk", "tan",
    "login code", "door code", "alarm code", "security code", "verification code", "authentication code", "cvv", "cvc",
    "otp", "2fa", "one time code", "recovery code", "recovery phrase", "seed phrase", "private key", "secret key",
    "api key", "card number", "card no", "credit card", "debit card", "expiry", "expiration", "ssn", "social security",
    "routing number", "account number", "sort code", "iban", "bic", "national insurance", "tax id", "tax number",
    "passport number", "licence number", "license number", "insurance number", "mother s maiden name"};

constexpr std::array valueWords{"is", "are", "was", "equals", "reads", "as", "to", "be"};

std::vector<std::string> wordsOf(std::string_view text)
{
    std::vector<std::string> words;
    for (std::size_t start = 0; start < text.size();) {
        const std::size_t end = std::min(text.find(' ', start), text.size());
        if (end > start)
            words.emplace_back(text.substr(start, end - start));
        start = end + 1;
    }
    return words;
}

bool isDigit(char letter)
{
    return letter >= '0' && letter <= '9';
}

bool hasDigit(const std::string& word)
{
    return std::any_of(word.begin(), word.end(), isDigit);
}

/// Where a run of words starts that spells `phrase`, in the singular or the plural.
std::size_t positionOf(const std::vector<std::string>& words, const std::vector<std::string>& phrase)
{
    const auto found = std::search(words.begin(), words.end(), phrase.begin(), phrase.end(),
        [](const std::string& word, const std::string& wanted) { return word == wanted || word == wanted + "s"; });
    return static_cast<std::size_t>(found - words.begin());
}

/// "Her password is kitten", "pin 1234", "1234 is the pin"; but not "forgets her password often".
bool tellsASecret(const std::vector<std::string>& words)
{
    return std::any_of(secretWords.begin(), secretWords.end(), [&words](const char* text) {
        const std::vector<std::string> phrase = wordsOf(text);
        const std::size_t position = positionOf(words, phrase);
        if (position == words.size())
            return false;
        const bool hasNumber = std::any_of(words.begin(), words.end(), hasDigit);
        const std::size_t next = position + phrase.size();
        const bool isGiven = next < words.size()
            && std::any_of(valueWords.begin(), valueWords.end(),
                [&word = words[next]](const char* value) { return word == value; });
        return hasNumber || isGiven;
    });
}

/// The check digit of payment cards.
bool isLuhnValid(const std::string& digits)
{
    int sum = 0;
    for (std::size_t index = 0; index < digits.size(); ++index) {
        const int digit = digits[digits.size() - 1 - index] - '0';
        const int weighted = index % 2 == 1 ? 2 * digit : digit;
        sum += weighted > 9 ? weighted - 9 : weighted;
    }
    return sum % 10 == 0;
}

/// Runs of digits, taken together across single spaces and hyphens.
bool hasCardNumber(const std::string& fact)
{
    constexpr std::size_t shortest = 13;
    constexpr std::size_t longest = 19;
    std::string digits;
    for (std::size_t position = 0; position <= fact.size(); ++position) {
        const char letter = position < fact.size() ? fact[position] : '.';
        if (isDigit(letter)) {
            digits += letter;
            continue;
        }
        const bool goesOn =
            (letter == ' ' || letter == '-') && position + 1 < fact.size() && isDigit(fact[position + 1]);
        if (goesOn)
            continue;
        if (digits.size() >= shortest && digits.size() <= longest && isLuhnValid(digits))
            return true;
        digits.clear();
    }
    return false;
}

/// The check of international account numbers: the first four characters go to the end, letters count from 10.
bool isAccountNumber(const std::string& text)
{
    constexpr std::size_t shortest = 15;
    constexpr std::size_t longest = 34;
    if (text.size() < shortest || text.size() > longest)
        return false;
    const auto isLetter = [](char letter) { return letter >= 'a' && letter <= 'z'; };
    if (!isLetter(text[0]) || !isLetter(text[1]) || !isDigit(text[2]) || !isDigit(text[3]))
        return false;
    int remainder = 0;
    for (const char letter : text.substr(4) + text.substr(0, 4)) {
        if (!isDigit(letter) && !isLetter(letter))
            return false;
        remainder = isDigit(letter) ? (10 * remainder + letter - '0') % 97 : (100 * remainder + letter - 'a' + 10) % 97;
    }
    return remainder == 1;
}

/// Written in one piece or in groups.
bool hasAccountNumber(const std::vector<std::string>& words)
{
    for (std::size_t first = 0; first < words.size(); ++first) {
        std::string joined;
        for (std::size_t next = first; next < words.size() && joined.size() < 34; ++next) {
            joined += words[next];
            if (isAccountNumber(joined))
                return true;
        }
    }
    return false;
}

} // namespace

std::string privateFactProblem(const std::string& fact)
{
    const auto words = wordsOf(TextMatch::normalized(fact));
    if (!tellsASecret(words) && !hasCardNumber(fact) && !hasAccountNumber(words))
        return "";
    return "Nothing was kept: passwords, codes and private numbers are never remembered. Tell them to keep it in a "
           "password manager, and don't repeat it aloud.";
}

} // namespace quorvell
