#include "LumoCore/Explaining/HelpQuestion.h"

#include "LumoCore/Basics/Text.h"
#include "LumoCore/Explaining/HelpShelf.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <set>

namespace lumo::HelpQuestion {

namespace {

// Without accents, as normalized texts are.
constexpr std::string_view spanishFunctionWords =
    "a ahi ahora al algo alguien algun alguna algunas alguno algunos alli ante antes aqui arriba asi aun "
    "aunque bien boton bueno busca buscar cada casi como con contra cosa cosas cual cuales cuando cuanto "
    "cuantos da dame dar de debe deberia debo decir deja dejar del desde despues dice dicen dime donde "
    "dos el ella ellas ello ellos en entonces entre era eres es esa esas ese eso esos esta estan estar "
    "estas este esto estos estoy falta fue funciona gente gracias grande grandes ha haber habia hace "
    "hacen hacer haces hacia haga hago han has hasta hay haya he hola idea ir la las le les lo los luego "
    "mala malo mas me mi mientras mio mios mis mismo mucha muchas mucho muchos muy nada necesario ni no "
    "nos nosotros nueva nuevo o os otra otras otro otros para parece parte pasa pasar pequena pequeno "
    "pero pinchado pinchar pincho poco podemos poder podria podrias pone ponen poner pongo por porque "
    "posible preocupa preocupo primer primera primero puede pueden puedes puedo pues pulsado pulsar pulse "
    "pulso que queda quedan quedar quien quiere quieren quieres quiero sabe saber sale salen se sea ser "
    "si sido siendo significa significan sino sirve sirven sobre sola solo son soy su sus tal tambien tan "
    "tanta tarvo te tendria tener tengo ti tiene tienen tienes toda todas todavia todo todos tu tus un "
    "una unas uno unos usa usar uso uy va vale vamos van ve veo ver verdad vez voy y ya yo";
constexpr std::string_view englishFunctionWords =
    "a about actually after all also always am an and any anybody anyone anything anyway app are aren as "
    "at bad be because been before being big but by can cannot click clicked come comes could couldn did "
    "didn different do does doesn doing don done dont each else even ever every everything first for from "
    "get gets getting give gives go goes going gone got had happen happens has have having he hello help "
    "her here hey hi his how i idea if in instead into is isn it its just kind know large let like ll lot "
    "lots made make makes many may maybe me mean means might mine missing more most much must my needed "
    "new no not now of off ok okay on one ones only oops or other our ours out over own people please "
    "plug possible press pressed put really rid run runs s same say saying says see seem seems set shall "
    "she should show showing shows since sit small so some somebody someone something speak speaks stand "
    "stay stuff such support supported supports sure symbol t take takes taking tarvo tell tells than "
    "that the their them then there these they thing things this those though through to today told too "
    "top try under up us use used uses using very wait want wanted wants was way we well were what when "
    "where whether which while who whose why will with worried worry would wouldn yes yet you your yours";

// What a question may name that is about one of many topics.
constexpr std::string_view spanishCommonThings =
    "abre abrir abro app archivo archivos bloque bloques borra borrar borre borro cambia cambiar cambio "
    "carpeta carpetas cuadro cuadros directorio disco elemento elementos elimina eliminar envia enviar "
    "equipo ficha fichero ficheros fila filas funciona funcionan funcionar funcione guarda guardar "
    "instala instalada instalar instalo limpia limpiar limpie limpio linea linux lista manda mandar mapa "
    "necesita necesito ordenador pantalla portatil programa programas quita quitar quite quito rectangulo "
    "recuadro recuadros sincroniza sincronizar ventana";
constexpr std::string_view englishCommonThings =
    "block blocks box boxes change changes clean cleaning cleans computer delete deletes deleting "
    "directory disk entry file files folder folders install installed installing item items keep keeps "
    "laptop line linux list map need open opens pc program programs rectangle remove removes removing row "
    "rows screen send sends sent square squares sync syncs tile tiles window";

std::set<std::string_view, std::less<>> setOf(std::string_view list) {
    std::set<std::string_view, std::less<>> all;
    while (!list.empty()) {
        const std::size_t end = std::min(list.find(' '), list.size());
        all.insert(list.substr(0, end));
        list.remove_prefix(std::min(end + 1, list.size()));
    }
    return all;
}

bool isFunctionWord(std::string_view word, Language language) {
    static const auto spanish = setOf(spanishFunctionWords);
    static const auto english = setOf(englishFunctionWords);
    return (language == Language::es ? spanish : english).contains(word);
}

bool isCommonThing(std::string_view word, Language language) {
    static const auto spanish = setOf(spanishCommonThings);
    static const auto english = setOf(englishCommonThings);
    return (language == Language::es ? spanish : english).contains(word);
}

/// The words of a normalized text that say something, each once, as many as a question has at most.
std::vector<std::string> tellingWords(std::string_view normalized, Language language) {
    constexpr std::size_t mostWords = 40; // Each is compared with every topic.
    std::vector<std::string> found;
    for (std::string& word : wordsIn(normalized)) {
        if (found.size() < mostWords && !isFunctionWord(word, language) &&
            std::ranges::find(found, word) == found.end()) {
            found.push_back(std::move(word));
        }
    }
    return found;
}

/// Those that are looked for.

std::vector<std::string> subjects(std::string_view question, Language language) {
    std::vector<std::string> found = tellingWords(HelpCatalog::normalize(question), language);
    const auto isCommon = [&](const std::string& word) { return isCommonThing(word, language); };
    if (!std::ranges::all_of(found, isCommon)) {
        std::erase_if(found, isCommon);
    }
    return found;
}

std::string singular(const std::string& word) {
    constexpr std::size_t shortest = 4;
    return word.size() > shortest && word.ends_with('s') ? word.substr(0, word.size() - 1) : word;
}

/// Whether the word, but for its ending, begins a word of the normalized text.
bool begins(const std::string& word, const std::string& text) {
    return (" " + text).find(" " + HelpCatalog::stemOf(singular(word))) != std::string::npos;
}

/// Whether the word, but for its ending, is one of the topic's keywords.
bool isKeywordOf(const HelpTopic& topic, const std::string& word) {
    const std::string stem = HelpCatalog::stemOf(word);
    return std::ranges::any_of(topic.keywords, [&](const std::string& keyword) {
        return singular(keyword) == singular(word) ||
               (stem != word && keyword != stem && HelpCatalog::stemOf(keyword) == stem);
    });
}

/// Whether a keyword that is as good as a question is the question or stands in it: three words, or two that
/// say something.
bool hasPhrase(const HelpTopic& topic, const std::string& question, Language language) {
    return std::ranges::any_of(topic.keywords, [&](const std::string& keyword) {
        const std::string phrase = " " + keyword + " ";
        const std::size_t count = wordsIn(keyword).size();
        return question == phrase ||
               ((count > 2 || (count == 2 && tellingWords(keyword, language).size() == 2)) &&
                question.find(phrase) != std::string::npos);
    });
}

/// How much a word of the question says for a topic: as a keyword more than by beginning a word, and alone
/// more than beside other topics.
int weightOf(const std::string& word, const HelpTopic& topic, const HelpCatalog::Shelf& all) {
    const auto isKeyword = [&](const HelpTopic& any) { return isKeywordOf(any, word); };
    if (const auto owners = std::ranges::count_if(all.topics, isKeyword); owners > 0) {
        return isKeyword(topic) ? (owners == 1 ? 3 : 2) : 0;
    }
    const auto isBegun = [&](const HelpCatalog::Searchable& texts) { return begins(word, texts.asked); };
    if (!isBegun(all.texts[static_cast<std::size_t>(&topic - all.topics.data())])) {
        return 0;
    }
    return std::ranges::count_if(all.texts, isBegun) == 1 ? 2 : 1;
}

/// A topic, and how well it fits the question.
struct Fit {
    const HelpTopic* topic = nullptr;
    bool hasPhrase = false;
    int score = 0;
    int begun = 0;  ///< Words of the question that begin words of the topic's question or keywords.
    int weight = 0; ///< What all of them say for it.
    std::ptrdiff_t firstWord = 0; ///< The first of them that says something, counted from the question's end.
};

Fit fitOf(const HelpTopic& topic, const std::string& asked, const std::vector<std::string>& words,
          const HelpCatalog::Shelf& all) {
    Fit fit{.topic = &topic};
    for (std::size_t position = 0; position < words.size(); ++position) {
        fit.begun += begins(words[position], asked) ? 1 : 0;
        const int weight = weightOf(words[position], topic, all);
        fit.weight += weight;
        if (weight > 0 && fit.firstWord == 0) {
            fit.firstWord = std::ssize(words) - static_cast<std::ptrdiff_t>(position);
        }
    }
    return fit;
}

/// How each topic fits, best first.
std::vector<Fit> fitsOf(std::string_view question, const std::vector<std::string>& words, Language language) {
    const HelpCatalog::Shelf& all = HelpCatalog::shelf(language, System::linux);
    const std::string whole = fmt::format(" {} ", fmt::join(wordsIn(HelpCatalog::normalize(question)), " "));
    std::vector<Fit> fits;
    for (std::size_t index = 0; index < all.topics.size(); ++index) {
        fits.push_back(fitOf(all.topics[index], all.texts[index].asked, words, all));
        fits.back().hasPhrase = hasPhrase(all.topics[index], whole, language);
    }
    for (const auto& [topic, score] :
         HelpCatalog::scored(fmt::format("{}", fmt::join(words, " ")), language, System::linux)) {
        fits[static_cast<std::size_t>(topic - all.topics.data())].score = score;
    }
    // Of equal scores, that of whole words weighs more than that of letters inside others.
    // The earlier topic comes first of what fits alike.
    std::ranges::sort(fits, std::ranges::greater(), [&](const Fit& fit) {
        return std::tuple(fit.hasPhrase && fit.begun > 0, fit.score, fit.begun,
                          all.topics.data() - fit.topic);
    });
    return fits;
}

/// Whether the help uses such a word; verbs change more than their last letters.
bool isKnown(const std::string& word, Language language) {
    constexpr std::size_t shortest = 3;
    const std::string beginning =
        " " + word.substr(0, std::max(shortest, word.size() - std::min<std::size_t>(word.size(), 2)));
    return std::ranges::any_of(
        HelpCatalog::shelf(language, System::linux).texts, [&](const HelpCatalog::Searchable& texts) {
            return (" " + texts.asked + " " + texts.answered).find(beginning) != std::string::npos;
        });
}

} // namespace

std::vector<std::string> wordsIn(std::string_view normalized) {
    std::vector<std::string> words;
    while (!normalized.empty()) {
        const std::size_t end = std::min(normalized.find(' '), normalized.size());
        if (end > 0) {
            words.emplace_back(normalized.substr(0, end));
        }
        normalized.remove_prefix(std::min(end + 1, normalized.size()));
    }
    return words;
}

std::string soughtIn(std::string_view question, Language language) {
    return fmt::format("{}", fmt::join(subjects(question, language), " "));
}

const HelpTopic* clearTopic(std::string_view question, Language language) {
    constexpr int clearMatch = 6;
    constexpr int clearWeight = 2;
    const std::vector<std::string> words = subjects(question, language);
    const std::vector<Fit> fits = fitsOf(question, words, language);
    const Fit& best = fits.front();
    if (best.begun > 0 && (best.hasPhrase || (best.score >= clearMatch && best.begun > 1))) {
        return best.topic;
    }
    // People name first what they ask about. Words that the help does not use speak for a question that it
    // does not answer.
    const auto rank = [](const Fit& fit) { return std::pair(fit.weight, fit.firstWord); };
    const Fit& heaviest = *std::ranges::max_element(fits, {}, rank);
    const auto unknown =
        std::ranges::count_if(words, [&](const std::string& word) { return !isKnown(word, language); });
    const bool isAlone =
        std::ranges::count(fits, rank(heaviest), [&](const Fit& fit) { return rank(fit); }) == 1;
    return isAlone && heaviest.weight - unknown >= clearWeight ? heaviest.topic : nullptr;
}

std::size_t wholeWords(std::string_view question, const HelpTopic& topic, Language language) {
    constexpr std::size_t fewestLetters = 4;
    const HelpCatalog::Shelf& all = HelpCatalog::shelf(language, System::linux);
    const std::string asked =
        fmt::format(" {} ", all.texts[static_cast<std::size_t>(&topic - all.topics.data())].asked);
    return static_cast<std::size_t>(
        std::ranges::count_if(subjects(question, language), [&](const std::string& word) {
            return characterCount(word) >= fewestLetters && asked.find(" " + word + " ") != std::string::npos;
        }));
}

} // namespace lumo::HelpQuestion
