// SPDX-License-Identifier: MIT
#include "QuorvellCore/reckoning/places/KnownPlaces.h"

namespace quorvell {

namespace {

using Row = KnownPlaces::Row;

constexpr Row cityRows[] = {
    {"America/New_York",
        "new york city|nyc|manhattan|brooklyn|boston|washington|washington "
        "dc|dc|miami|orlando|tampa|jacksonville|atlanta|"
        "philadelphia|pittsburgh|baltimore|cleveland|columbus|cincinnati|charlotte|raleigh|buffalo|richmond|norfolk|"
        "providence|hartford|newark|savannah|charleston|fort lauderdale|ann arbor|grand rapids|knoxville"},
    {"America/Chicago",
        "dallas|houston|austin|san antonio|fort worth|memphis|nashville|new orleans|milwaukee|minneapolis|st louis|"
        "saint louis|kansas city|oklahoma city|tulsa|omaha|madison|birmingham alabama|des moines|st paul|wichita|"
        "little rock|baton rouge|paris texas|springfield illinois"},
    {"America/Denver", "salt lake city|albuquerque|santa fe|colorado springs|boulder|aspen|el paso|cheyenne|billings"},
    {"America/Phoenix", "tucson|scottsdale|flagstaff|mesa"},
    {"America/Los_Angeles",
        "la|hollywood|san francisco|san diego|san jose|sacramento|oakland|seattle|portland|las vegas|vegas|long beach|"
        "berkeley|silicon valley|palo alto|fresno|santa barbara|spokane|tacoma|reno|anaheim"},
    {"Pacific/Honolulu", "hawaii|maui|oahu|waikiki"},
    {"America/Toronto", "ottawa|montreal|quebec city|hamilton|mississauga|london ontario|kingston ontario"},
    {"America/Edmonton", "calgary|banff"},
    {"America/Vancouver", "vancouver|victoria british columbia"},
    {"America/Halifax", "nova scotia"},
    {"America/Mexico_City", "guadalajara|puebla"},
    {"America/Sao_Paulo", "rio|rio de janeiro|brasilia|porto alegre|curitiba|belo horizonte"},
    {"America/Argentina/Buenos_Aires", "buenos aires|rosario"},
    {"America/Bogota", "medellin|cali|cartagena"},
    {"Europe/London",
        "birmingham|manchester|liverpool|leeds|sheffield|bristol|oxford|cambridge|brighton|york|bath|nottingham|"
        "leicester|"
        "newcastle|southampton|portsmouth|plymouth|exeter|norwich|edinburgh|glasgow|aberdeen|dundee|inverness|cardiff|"
        "swansea|greenwich|london england|london uk"},
    {"Europe/Dublin", "cork|galway|limerick"},
    {"Europe/Paris", "lyon|marseille|nice|toulouse|bordeaux|lille|strasbourg|nantes|cannes"},
    {"Europe/Berlin",
        "munich|hamburg|frankfurt|cologne|stuttgart|dusseldorf|leipzig|dresden|hanover|nuremberg|bremen|dortmund|essen|"
        "heidelberg|bonn"},
    {"Europe/Zurich", "geneva|basel|bern|lausanne|lucerne"},
    {"Europe/Vienna", "salzburg|graz|innsbruck|linz"},
    {"Europe/Rome", "milan|naples|florence|venice|turin|bologna|palermo|genoa|verona|pisa|sicily"},
    {"Europe/Madrid", "barcelona|valencia|seville|bilbao|malaga|ibiza|majorca|mallorca|granada"},
    {"Europe/Lisbon", "porto|faro"},
    {"Europe/Amsterdam", "rotterdam|the hague|utrecht|eindhoven"},
    {"Europe/Brussels", "antwerp|ghent|bruges"},
    {"Europe/Warsaw", "krakow|cracow|gdansk|wroclaw|poznan"},
    {"Europe/Stockholm", "gothenburg|malmo"},
    {"Europe/Oslo", "bergen|trondheim"},
    {"Europe/Moscow", "st petersburg|saint petersburg"},
    {"Europe/Athens", "thessaloniki|crete"},
    {"Europe/Istanbul", "ankara|antalya|izmir|constantinople"},
    {"Europe/Kyiv", "kyiv|kiev|lviv|odessa|odesa|kharkiv"},
    {"Africa/Cairo", "alexandria|giza"},
    {"Africa/Johannesburg", "cape town|durban|pretoria"},
    {"Africa/Lagos", "abuja|kano|ibadan"},
    {"Africa/Casablanca", "marrakesh|marrakech|rabat|fez"},
    {"Africa/Nairobi", "mombasa"},
    {"Asia/Dubai", "abu dhabi|sharjah"},
    {"Asia/Riyadh", "jeddah|mecca|medina"},
    {"Asia/Jerusalem", "tel aviv|haifa"},
    {"Asia/Tehran", "isfahan|shiraz"},
    {"Asia/Karachi", "lahore|islamabad|rawalpindi"},
    {"Asia/Kolkata",
        "mumbai|bombay|delhi|new delhi|bangalore|bengaluru|chennai|madras|hyderabad|pune|kolkata|calcutta|ahmedabad|"
        "jaipur|goa|kochi|lucknow|surat"},
    {"Asia/Dhaka", "chittagong"},
    {"Asia/Bangkok", "phuket|chiang mai|pattaya"},
    {"Asia/Ho_Chi_Minh", "ho chi minh city|saigon|hanoi|da nang"},
    {"Asia/Jakarta", "bandung|java"},
    {"Asia/Makassar", "bali|denpasar"},
    {"Asia/Manila", "cebu|quezon city"},
    {"Asia/Shanghai", "beijing|peking|shenzhen|guangzhou|chengdu|wuhan|nanjing|hangzhou|xian|tianjin"},
    {"Asia/Tokyo", "osaka|kyoto|yokohama|nagoya|sapporo|hiroshima|fukuoka|kobe|nagasaki"},
    {"Asia/Seoul", "busan|incheon"},
    {"Australia/Sydney", "canberra|newcastle australia|wollongong"},
    {"Australia/Melbourne", "geelong"},
    {"Australia/Brisbane", "gold coast|cairns"},
    {"Pacific/Auckland", "wellington|christchurch|queenstown|dunedin"},
};

constexpr Row regionRows[] = {
    {"America/New_York|America/Chicago|America/Denver|America/Los_Angeles",
        "united states|united states of america|the states|the united states|usa|us|america|u s|u s a"},
    {"America/Vancouver|America/Edmonton|America/Winnipeg|America/Toronto|America/Halifax", "canada"},
    {"America/Tijuana|America/Mexico_City|America/Cancun", "mexico"},
    {"America/Manaus|America/Sao_Paulo", "brazil"},
    {"Europe/Moscow|Asia/Yekaterinburg|Asia/Novosibirsk|Asia/Vladivostok", "russia|russian federation"},
    {"Australia/Perth|Australia/Adelaide|Australia/Brisbane|Australia/Sydney", "australia"},
    {"Asia/Jakarta|Asia/Makassar|Asia/Jayapura", "indonesia"},
    {"Africa/Kinshasa|Africa/Lubumbashi", "congo|democratic republic of the congo|democratic republic of congo"},
    {"Asia/Shanghai", "china|prc|mainland china"},
    {"Europe/Madrid", "spain"},
    {"Europe/Lisbon", "portugal"},
    {"America/Santiago", "chile"},
    {"America/Argentina/Buenos_Aires", "argentina"},
    {"America/Guayaquil", "ecuador"},
    {"Pacific/Auckland", "new zealand"},
    {"Asia/Almaty", "kazakhstan"},
    {"Asia/Ulaanbaatar", "mongolia"},
    {"Asia/Kuala_Lumpur", "malaysia"},
    {"Asia/Tashkent", "uzbekistan"},
    {"Europe/Berlin", "germany|deutschland"},
    {"Europe/Kyiv", "ukraine"},
    {"Asia/Nicosia", "cyprus"},
    {"Asia/Hebron=Palestine", "palestine"},
    {"Europe/London", "england|uk|united kingdom|britain|great britain|scotland|wales|northern ireland|the uk"},
    {"Europe/Amsterdam", "holland|the netherlands|netherlands"},
    {"Asia/Dubai", "uae|emirates|the emirates|united arab emirates"},
    {"Asia/Seoul", "korea|south korea"},
    {"Asia/Pyongyang", "north korea"},
    {"Asia/Manila", "the philippines|philippines"},
    {"Europe/Prague", "czech republic|czechia"},
    {"Europe/Istanbul", "turkey"},
    {"Asia/Ho_Chi_Minh", "vietnam"},
    {"Africa/Abidjan=Ivory Coast", "ivory coast"},
    {"Asia/Yangon=Burma", "burma|myanmar"},
    {"America/New_York=Atlanta|Asia/Tbilisi", "georgia"},
    {"Africa/Johannesburg", "south africa"},
    // States and coasts
    {"America/New_York",
        "east coast|us east coast|east coast of the united states|east coast of the us|east coast of the usa|"
        "east coast of america|the east coast|maine|vermont|new hampshire|massachusetts|connecticut|rhode island|"
        "new york state|new jersey|pennsylvania|delaware|maryland|virginia|west virginia|north carolina|south carolina|"
        "ohio|michigan|new england"},
    {"America/New_York=Miami|America/Chicago=Pensacola", "florida"},
    {"America/New_York=Louisville|America/Chicago=Bowling Green", "kentucky"},
    {"America/New_York=Knoxville|America/Chicago=Nashville", "tennessee"},
    {"America/Indiana/Indianapolis", "indiana"},
    {"America/Chicago",
        "texas|illinois|wisconsin|minnesota|iowa|missouri|arkansas|louisiana|mississippi|alabama|oklahoma|kansas|"
        "nebraska|"
        "north dakota|south dakota"},
    {"America/Denver", "montana|wyoming|colorado|utah|new mexico"},
    {"America/Boise", "idaho"},
    {"America/Phoenix", "arizona"},
    {"America/Los_Angeles",
        "west coast|us west coast|west coast of the united states|west coast of the us|west coast of america|the west "
        "coast|california|washington state|oregon|nevada"},
    {"America/Anchorage", "alaska"},
    {"America/Toronto", "ontario|quebec"},
    {"America/Edmonton", "alberta"},
    {"America/Vancouver", "british columbia"},
    {"America/Winnipeg", "manitoba"},
    {"Australia/Sydney", "new south wales|nsw"},
    {"Australia/Melbourne", "victoria"},
    {"Australia/Brisbane", "queensland"},
    {"Australia/Perth", "western australia"},
    {"Australia/Adelaide", "south australia"},
    {"Australia/Hobart", "tasmania"},
    {"Asia/Kolkata", "india|kerala|punjab|gujarat|tamil nadu"},
    {"Europe/Berlin", "bavaria"},
    {"Asia/Tokyo", "japan"},
    {"Africa/Lagos", "nigeria"},
    {"Africa/Cairo", "egypt"},
    {"Africa/Nairobi", "kenya"},
    {"Asia/Karachi", "pakistan"},
    {"Asia/Dhaka", "bangladesh"},
    {"Asia/Bangkok", "thailand"},
    {"Europe/Paris", "france"},
    {"Europe/Rome", "italy"},
    {"Europe/Dublin", "ireland"},
};

constexpr Row zoneRows[] = {
    {"America/New_York=Eastern time", "eastern|eastern time|eastern standard time|est|edt|et|us eastern"},
    {"America/Chicago=Central time", "central|central time|central standard time|cst|cdt|us central"},
    {"America/Denver=Mountain time", "mountain|mountain time|mountain standard time|mst|mdt|us mountain"},
    {"America/Los_Angeles=Pacific time", "pacific|pacific time|pacific standard time|pst|pdt|us pacific"},
    {"America/Halifax=Atlantic time", "atlantic time|atlantic standard time"},
    {"Etc/UTC=UTC", "utc|coordinated universal time|universal time|zulu|zulu time"},
    {"Etc/GMT=Greenwich Mean Time", "gmt|greenwich mean time"},
    {"Europe/London=British time", "bst|british|british time|british summer time|uk time"},
    {"Europe/Berlin=Central European time", "cet|cest|central european|central european time"},
    {"Europe/Helsinki=Eastern European time", "eet|eest|eastern european time"},
    {"Europe/Lisbon=Western European time", "wet|western european time"},
    {"Europe/Moscow=Moscow time", "msk|moscow time"},
    {"Asia/Kolkata=Indian time", "ist|indian|indian time|india standard time|indian standard time"},
    {"Asia/Tokyo=Japanese time", "jst|japanese|japanese time|japan standard time"},
    {"Asia/Shanghai=Chinese time", "chinese|chinese time|china standard time"},
    {"Australia/Sydney=Eastern Australian time", "aest|aedt"},
};

} // namespace

std::span<const Row> KnownPlaces::cities()
{
    return cityRows;
}

std::span<const Row> KnownPlaces::regions()
{
    return regionRows;
}

std::span<const Row> KnownPlaces::zones()
{
    return zoneRows;
}

} // namespace quorvell
