// SPDX-License-Identifier: MIT
#include "QuorvellCore/safety/places/MoneySites.h"

#include "QuorvellCore/safety/words/LookAlikes.h"
#include "QuorvellCore/safety/words/OneOf.h"

#include <unicode/bytestream.h>
#include <unicode/idna.h>

#include <algorithm>
#include <array>
#include <memory>
#include <string>
#include <vector>

namespace quorvell {

namespace {

/// The large ones of the countries whose languages or money people ask about most; those that are missing often call
/// themselves banks. First payments, coins and brokers, then by country: United States, United Kingdom, Germany and its
/// neighbours, France, Spain, Italy, India, Nepal, Australia, Canada.
constexpr auto moneyHosts = std::to_array<std::string_view>({"paypal.com", "paypal.me", "venmo.com", "zellepay.com",
    "cash.app", "wise.com", "revolut.com", "stripe.com", "squareup.com", "klarna.com", "afterpay.com", "affirm.com",
    "payoneer.com", "skrill.com", "neteller.com", "westernunion.com", "moneygram.com", "remitly.com", "worldremit.com",
    "xoom.com", "alipay.com", "adyen.com", "mollie.com", "gocardless.com", "sofort.com", "giropay.de", "paydirekt.de",
    "twint.ch", "interac.ca", "bpay.com.au", "paytm.com", "phonepe.com", "razorpay.com", "mobikwik.com", "payu.in",
    "esewa.com.np", "khalti.com", "connectips.com", "imepay.com.np", "pay.google.com", "wallet.google.com",
    "payments.google.com", "pay.amazon.com", "gofundme.com", "patreon.com", "visa.com", "mastercard.com",
    "americanexpress.com", "discover.com", "coinbase.com", "binance.com", "kraken.com", "crypto.com", "gemini.com",
    "bitstamp.net", "bitfinex.com", "kucoin.com", "okx.com", "bybit.com", "blockchain.com", "bitpanda.com",
    "metamask.io", "opensea.io", "fidelity.com", "schwab.com", "vanguard.com", "robinhood.com", "etrade.com",
    "interactivebrokers.com", "merrilledge.com", "etoro.com", "degiro.com", "traderepublic.com", "hl.co.uk",
    "trading212.com", "zerodha.com", "groww.in", "upstox.com", "meroshare.cdsc.com.np", "wealthsimple.com",
    "questrade.com", "chase.com", "bankofamerica.com", "wellsfargo.com", "citi.com", "capitalone.com", "usbank.com",
    "pnc.com", "truist.com", "td.com", "ally.com", "marcus.com", "sofi.com", "chime.com", "navyfederal.org", "usaa.com",
    "regions.com", "key.com", "synchrony.com", "irs.gov", "barclays.co.uk", "barclays.com", "hsbc.com", "hsbc.co.uk",
    "lloydsbank.com", "halifax.co.uk", "natwest.com", "rbs.co.uk", "santander.com", "santander.co.uk",
    "nationwide.co.uk", "monzo.com", "starlingbank.com", "tsb.co.uk", "firstdirect.com", "virginmoney.com",
    "metrobankonline.co.uk", "co-operativebank.co.uk", "sparkasse.de", "sparkasse.at", "commerzbank.de",
    "deutsche-bank.de", "ing.de", "ing.com", "ing.nl", "dkb.de", "n26.com", "comdirect.de", "postbank.de", "vr.de",
    "hypovereinsbank.de", "targobank.de", "consorsbank.de", "bawag.at", "ubs.com", "postfinance.ch", "zkb.ch",
    "raiffeisen.ch", "rabobank.nl", "abnamro.nl", "bunq.com", "elster.de", "bnpparibas", "bnpparibas.com",
    "credit-agricole.fr", "societegenerale.fr", "sg.fr", "labanquepostale.fr", "boursorama.com", "boursobank.com",
    "lcl.fr", "caisse-epargne.fr", "banquepopulaire.fr", "creditmutuel.fr", "cic.fr", "bbva.com", "bbva.es",
    "caixabank.es", "intesasanpaolo.com", "unicredit.it", "poste.it", "onlinesbi.sbi", "sbi.co.in", "hdfcbank.com",
    "icicibank.com", "axisbank.com", "kotak.com", "pnbindia.in", "bankofbaroda.in", "canarabank.com", "yesbank.in",
    "idfcfirstbank.com", "indusind.com", "nabilbank.com", "nicasiabank.com", "globalimebank.com", "nmb.com.np",
    "siddharthabank.com", "sanimabank.com", "commbank.com.au", "westpac.com.au", "anz.com", "anz.com.au", "nab.com.au",
    "ing.com.au", "rbc.com", "rbcroyalbank.com", "scotiabank.com", "bmo.com", "cibc.com", "tangerine.ca",
    "desjardins.com"});

constexpr auto bankWords = std::to_array<std::string_view>({"bank", "banks", "banking", "ebanking", "netbanking",
    "banque", "banco", "banca", "creditunion", "sparkasse", "volksbank", "raiffeisen", "raiffeisenbank"});

constexpr auto accountHostLabels = std::to_array<std::string_view>({"login", "signin", "accounts", "account", "billing",
    "checkout", "pay", "payment", "payments", "wallet", "myaccount", "secure-login"});

constexpr auto accountPathWords = std::to_array<std::string_view>({"login", "log-in", "log_in", "logon", "signin",
    "sign-in", "sign_in", "checkout", "check-out", "billing", "payment"});

/// As they look, sorted.
const std::vector<std::string>& moneyHostForms()
{
    static const std::vector<std::string> forms = [] {
        std::vector<std::string> all;
        std::transform(moneyHosts.begin(), moneyHosts.end(), std::back_inserter(all), asItLooks);
        std::sort(all.begin(), all.end());
        return all;
    }();
    return forms;
}

/// International names in their own letters.
std::string inOwnLetters(std::string_view host)
{
    if (host.find("xn--") == std::string_view::npos)
        return std::string(host);
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::IDNA> names(icu::IDNA::createUTS46Instance(UIDNA_DEFAULT, status));
    std::string own;
    icu::StringByteSink<std::string> sink(&own);
    icu::IDNAInfo info;
    if (names)
        names->nameToUnicodeUTF8({host.data(), static_cast<std::int32_t>(host.size())}, sink, info, status);
    return names && U_SUCCESS(status) ? own : std::string(host);
}

/// Whether `test` holds of what stands between two of `marks`, or at an end.
template <typename Test> bool anyPart(std::string_view text, std::string_view marks, const Test& test)
{
    for (std::size_t start = 0; start <= text.size();) {
        const std::size_t end = std::min(text.find_first_of(marks, start), text.size());
        if (test(text.substr(start, end - start)))
            return true;
        start = end + 1;
    }
    return false;
}

/// "bank", "my-bank", "examplebank", "bankofexample".
bool callsItselfBank(std::string_view host)
{
    return anyPart(host, ".", [](std::string_view label) {
        return label.ends_with("bank") || label.starts_with("bankof");
    }) || anyPart(host, ".-", [](std::string_view word) { return isOneOf(bankWords, word); });
}

} // namespace

bool MoneySites::isMoneySite(std::string_view host)
{
    const std::string looks = asItLooks(inOwnLetters(host));
    const auto& known = moneyHostForms();
    for (std::string_view rest = looks; !rest.empty();) {
        if (std::binary_search(known.begin(), known.end(), rest))
            return true;
        const auto dot = rest.find('.');
        rest = dot == std::string_view::npos ? std::string_view() : rest.substr(dot + 1);
    }
    return callsItselfBank(host);
}

bool MoneySites::isAccountPage(const JudgedAddress& address)
{
    return anyPart(address.host, ".", [](std::string_view label) { return isOneOf(accountHostLabels, label); })
        || std::any_of(accountPathWords.begin(), accountPathWords.end(),
            [&](std::string_view word) { return address.path.find(word) != std::string::npos; });
}

} // namespace quorvell
