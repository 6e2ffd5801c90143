// SPDX-License-Identifier: MIT
#include "QuorvellCore/reckoning/places/KnownPlaces.h"

namespace quorvell {

namespace {

using Row = KnownPlaces::Row;

constexpr Row cityRows[] = {
    // Names that two places share and that neither owns
    {"Europe/London=Birmingham, England|America/Chicago=Birmingham, Alabama", "birmingham"},
    {"America/Los_Angeles=Portland, Oregon|America/New_York=Portland, Maine", "portland"},
    {"America/Chicago=Springfield, Illinois or Missouri|America/New_York=Springfield, Massachusetts", "springfield"},
    {"America/Los_Angeles=San Jose, California|America/Costa_Rica=San Jose, Costa Rica", "san jose"},
    {"Asia/Kolkata=Hyderabad, India|Asia/Karachi=Hyderabad, Pakistan", "hyderabad"},
    {"Europe/London=Cambridge, England|America/New_York=Cambridge, Massachusetts", "cambridge"},
    {"Europe/Moscow=Saint Petersburg, Russia|America/New_York=Saint Petersburg, Florida",
        "st petersburg|saint petersburg"},
    {"America/New_York=Columbia, South Carolina|America/Chicago=Columbia, Missouri", "columbia"},
    {"America/New_York=Rochester, New York|America/Chicago=Rochester, Minnesota", "rochester"},
    {"America/New_York=Arlington, Virginia|America/Chicago=Arlington, Texas", "arlington"},
    {"America/Denver=Aurora, Colorado|America/Chicago=Aurora, Illinois", "aurora"},
    {"America/New_York=Bloomington, Indiana|America/Chicago=Bloomington, Illinois", "bloomington"},
    {"America/Los_Angeles=Glendale, California|America/Phoenix=Glendale, Arizona", "glendale"},
    {"America/Chicago=Peoria, Illinois|America/Phoenix=Peoria, Arizona", "peoria"},
    {"America/Toronto=Hamilton, Ontario|Pacific/Auckland=Hamilton, New Zealand", "hamilton"},
    {"America/Argentina/Cordoba=Cordoba, Argentina|Europe/Madrid=Cordoba, Spain", "cordoba"},
    {"Europe/Madrid=Valencia, Spain|America/Caracas=Valencia, Venezuela", "valencia"},
    {"Europe/Madrid=Granada, Spain|America/Managua=Granada, Nicaragua", "granada"},
    {"Africa/Cairo=Alexandria, Egypt|America/New_York=Alexandria, Virginia", "alexandria"},
    {"Europe/London=Newcastle, England|Australia/Sydney=Newcastle, Australia", "newcastle"},
    {"America/New_York",
        "albany|syracuse|akron|toledo|dayton|greensboro|durham north carolina|winston salem|columbia south "
        "carolina|augusta|"
        "chattanooga|trenton|atlantic city|long island|queens|the bronx|staten island|harlem|new haven|worcester "
        "massachusetts|"
        "burlington|tallahassee|gainesville|fort myers|west palm beach|key west|myrtle beach|virginia beach|wilmington|"
        "annapolis|harrisburg|scranton|allentown|lansing|flint|kalamazoo|roanoke|asheville|"
        "new york city|nyc|manhattan|brooklyn|boston|washington|washington "
        "dc|dc|miami|orlando|tampa|jacksonville|atlanta|"
        "philadelphia|pittsburgh|baltimore|cleveland|columbus|cincinnati|charlotte|raleigh|buffalo|richmond|norfolk|"
        "providence|hartford|newark|savannah|charleston|fort lauderdale|ann arbor|grand rapids|knoxville"},
    {"America/Chicago",
        "mobile|montgomery|huntsville|shreveport|green bay|duluth|fargo|sioux falls|lincoln nebraska|topeka|corpus "
        "christi|"
        "lubbock|amarillo|laredo|plano|waco|galveston|jackson mississippi|rockford|"
        "dallas|houston|austin|san antonio|fort worth|memphis|nashville|new orleans|milwaukee|minneapolis|st louis|"
        "saint louis|kansas city|oklahoma city|tulsa|omaha|madison|birmingham alabama|des moines|st paul|wichita|"
        "little rock|baton rouge|paris texas|springfield illinois"},
    {"America/Denver", "salt lake city|albuquerque|santa fe|colorado springs|boulder|aspen|el paso|cheyenne|billings"},
    {"America/Phoenix", "tucson|scottsdale|flagstaff|mesa"},
    {"America/Los_Angeles",
        "bakersfield|riverside|stockton|santa cruz|santa "
        "monica|burbank|irvine|pasadena|malibu|eugene|salem|olympia|bellevue|"
        "redmond|cupertino|mountain view|sunnyvale|beverly hills|palm springs|carson city|"
        "la|hollywood|san francisco|san diego|sacramento|oakland|seattle|las vegas|vegas|long beach|"
        "berkeley|silicon valley|palo alto|fresno|santa barbara|spokane|tacoma|reno|anaheim"},
    {"Pacific/Honolulu", "hawaii|maui|oahu|waikiki"},
    {"America/Toronto",
        "ottawa|montreal|quebec city|niagara falls|windsor ontario|hamilton ontario|mississauga|london "
        "ontario|kingston ontario"},
    {"America/Edmonton", "calgary|banff"},
    {"America/Vancouver", "vancouver|victoria british columbia"},
    {"America/Halifax", "nova scotia"},
    {"America/Mexico_City", "guadalajara|puebla"},
    {"America/Sao_Paulo", "rio|rio de janeiro|brasilia|porto alegre|curitiba|belo horizonte"},
    {"America/Argentina/Buenos_Aires", "buenos aires|rosario"},
    {"America/Bogota", "medellin|cali|cartagena"},
    {"Europe/London",
        "manchester|liverpool|leeds|sheffield|bristol|oxford|brighton|york|bath|nottingham|"
        "leicester|coventry|hull|wolverhampton|derby|stoke|blackpool|bournemouth|reading|luton|durham|worcester|"
        "belfast|"
        "southampton|portsmouth|plymouth|exeter|norwich|edinburgh|glasgow|aberdeen|dundee|inverness|cardiff|"
        "swansea|greenwich|london england|london uk"},
    {"Europe/Dublin", "cork|galway|limerick"},
    {"Europe/Paris", "lyon|marseille|nice|toulouse|bordeaux|lille|strasbourg|nantes|cannes"},
    {"Europe/Berlin",
        "munich|hamburg|frankfurt|cologne|stuttgart|dusseldorf|leipzig|dresden|hanover|nuremberg|bremen|dortmund|essen|"
        "heidelberg|bonn"},
    {"Europe/Zurich", "geneva|basel|bern|lausanne|lucerne"},
    {"Europe/Vienna", "salzburg|graz|innsbruck|linz"},
    {"Europe/Rome", "milan|naples|florence|venice|turin|bologna|palermo|genoa|verona|pisa|sicily"},
    {"Europe/Madrid", "barcelona|seville|bilbao|malaga|ibiza|majorca|mallorca|zaragoza|alicante|marbella|palma"},
    {"Europe/Lisbon", "porto|faro"},
    {"Europe/Amsterdam", "rotterdam|the hague|utrecht|eindhoven"},
    {"Europe/Brussels", "antwerp|ghent|bruges"},
    {"Europe/Warsaw", "krakow|cracow|gdansk|wroclaw|poznan"},
    {"Europe/Stockholm", "gothenburg|malmo"},
    {"Europe/Oslo", "bergen|trondheim"},
    {"Europe/Moscow", "sochi|kazan|leningrad"},
    {"Europe/Athens", "thessaloniki|crete"},
    {"Europe/Istanbul", "ankara|antalya|izmir|constantinople"},
    {"Europe/Kyiv", "kyiv|kiev|lviv|odessa|odesa|kharkiv"},
    {"Africa/Cairo", "giza|luxor"},
    {"Africa/Johannesburg", "cape town|durban|pretoria"},
    {"Africa/Lagos", "abuja|kano|ibadan"},
    {"Africa/Casablanca", "marrakesh|marrakech|rabat|fez"},
    {"Africa/Nairobi", "mombasa"},
    {"Asia/Dubai", "abu dhabi|sharjah"},
    {"Asia/Qatar", "doha"},
    {"Asia/Kuwait", "kuwait city"},
    {"Asia/Bahrain", "manama"},
    {"Asia/Baghdad", "basra|mosul|erbil"},
    {"Asia/Yerevan", "gyumri"},
    {"Asia/Colombo", "kandy"},
    {"Asia/Kathmandu", "pokhara"},
    {"Asia/Yangon", "mandalay|naypyidaw|rangoon"},
    {"Asia/Kuala_Lumpur", "penang|johor bahru|kl"},
    {"Asia/Taipei", "kaohsiung|taichung"},
    {"Asia/Almaty", "astana|nur sultan"},
    {"Africa/Bamako", "timbuktu"},
    {"Africa/Accra", "kumasi"},
    {"Africa/Dar_es_Salaam", "dodoma|zanzibar|arusha"},
    {"Africa/Douala", "yaounde"},
    {"Africa/Addis_Ababa", "addis ababa"},
    {"Africa/Abidjan", "yamoussoukro"},
    {"Africa/Algiers", "oran"},
    {"America/La_Paz", "sucre|santa cruz de la sierra"},
    {"America/Lima", "cusco|arequipa"},
    {"America/Guayaquil", "quito"},
    {"America/Caracas", "maracaibo"},
    {"America/Santo_Domingo", "punta cana"},
    {"America/Puerto_Rico", "san juan"},
    {"America/Cancun", "playa del carmen|tulum"},
    {"America/Tijuana", "mexicali"},
    {"America/St_Johns", "st johns|saint johns"},
    {"America/Regina", "saskatoon|saskatchewan"},
    {"America/Indiana/Indianapolis", "fort wayne|south bend"},
    {"America/Kentucky/Louisville", "lexington"},
    {"Pacific/Honolulu", "hilo|kona"},
    {"Asia/Riyadh", "jeddah|mecca|medina"},
    {"Asia/Jerusalem", "tel aviv|haifa"},
    {"Asia/Tehran", "isfahan|shiraz"},
    {"Asia/Karachi", "lahore|islamabad|rawalpindi"},
    {"Asia/Kolkata",
        "mumbai|bombay|delhi|new delhi|bangalore|bengaluru|chennai|madras|pune|kolkata|calcutta|ahmedabad|"
        "jaipur|goa|nagpur|indore|bhopal|patna|chandigarh|coimbatore|visakhapatnam|vizag|mysore|varanasi|agra|noida|"
        "gurgaon|"
        "gurugram|thiruvananthapuram|trivandrum|vadodara|amritsar|mangalore|kochi|lucknow|surat"},
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
    {"America/New_York=East Coast",
        "east coast|us east coast|east coast of the united states|east coast of the us|east coast of the usa|east "
        "coast of america|the east coast"},
    {"America/New_York",
        "maine|vermont|new hampshire|massachusetts|connecticut|rhode island|"
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
    {"America/Los_Angeles=West Coast",
        "west coast|us west coast|west coast of the united states|west coast of the us|west coast of america|the west "
        "coast|west coast of the usa"},
    {"America/Los_Angeles", "california|washington state|oregon|nevada"},
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
