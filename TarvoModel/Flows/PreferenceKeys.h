#pragma once

#include "LumoCore/Basics/Date.h"
#include "LumoCore/Basics/JsonValue.h"
#include "LumoCore/Basics/Words.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace tarvo {

/// What may be stored under a key.
enum class PreferenceKind { integer, boolean, number, text, choice, folders, date, localModel };

/// One preference, whatever its kind.
struct Preference {
    std::string_view key; ///< As it is stored: the same word in both languages.
    PreferenceKind kind;
    /// What holds while nothing is stored; nothing for "absent". Folders are none then.
    std::variant<std::monostate, bool, std::int64_t, double, std::string_view> standard = {};
    std::span<const std::string_view> choices = {}; ///< Of a choice.
    double least = 0;                               ///< Of integers and numbers.
    double most = 9.0e15;
    lumo::Words meaning;
};

/// A preference with the type of its values: an optional one where nothing holds while nothing is stored.
template <class Value>
struct PreferenceKey : Preference {};

/// All preferences there are.
namespace preference {

inline constexpr std::array<std::string_view, 3> appearances{"system", "light", "dark"};
inline constexpr std::array<std::string_view, 3> languages{"system", "es", "en"};

inline constexpr PreferenceKey<std::int64_t> goalBytes{
    {.key = "objetivoBytes",
     .kind = PreferenceKind::integer,
     .standard = std::int64_t{24000000000},
     .meaning = {"bytes que quieres liberar", "bytes you want to free"}}};
inline constexpr PreferenceKey<bool> isWelcomeSeen{
    {.key = "bienvenidaVista",
     .kind = PreferenceKind::boolean,
     .standard = false,
     .meaning = {"la bienvenida ya se ha visto", "the welcome has been seen"}}};
inline constexpr PreferenceKey<bool> showWholeDisk{
    {.key = "verDiscoEntero",
     .kind = PreferenceKind::boolean,
     .standard = false,
     .meaning = {"el mapa muestra el disco entero", "the map shows the whole disk"}}};
inline constexpr PreferenceKey<std::string> appearance{
    {.key = "apariencia",
     .kind = PreferenceKind::choice,
     .standard = std::string_view("system"),
     .choices = appearances,
     .meaning = {"aspecto claro, oscuro o el del sistema", "light, dark or the system's appearance"}}};
inline constexpr PreferenceKey<std::string> language{
    {.key = "idioma",
     .kind = PreferenceKind::choice,
     .standard = std::string_view("system"),
     .choices = languages,
     .meaning = {"idioma de los textos: es, en o el del sistema",
                 "language of the texts: es, en or the system's"}}};
inline constexpr PreferenceKey<bool> showInMenuBar{
    {.key = "barraDeMenus",
     .kind = PreferenceKind::boolean,
     .standard = true,
     .meaning = {"icono que queda a la vista con la ventana cerrada",
                 "icon that stays in sight while the window is closed"}}};
inline constexpr PreferenceKey<std::int64_t> lowSpaceGB{
    {.key = "avisoGB",
     .kind = PreferenceKind::integer,
     .standard = std::int64_t{10},
     .most = 1000000,
     .meaning = {"GB libres por debajo de los que avisar", "free GB below which to warn"}}};
inline constexpr PreferenceKey<bool> notifyLowSpace{
    {.key = "avisoNotificacion",
     .kind = PreferenceKind::boolean,
     .standard = true,
     .meaning = {"avisar con una notificación", "warn with a notification"}}};
inline constexpr PreferenceKey<bool> autoCleanWeekly{
    {.key = "limpiezaSemanal",
     .kind = PreferenceKind::boolean,
     .standard = false,
     .meaning = {"limpiar cada semana lo que se regenera solo", "clean weekly what recreates itself"}}};
inline constexpr PreferenceKey<std::int64_t> activeProjectDays{
    {.key = "diasProyectoActivo",
     .kind = PreferenceKind::integer,
     .standard = std::int64_t{30},
     .most = 36500,
     .meaning = {"días tras un cambio en los que no se tocan las dependencias de un proyecto",
                 "days after a change in which a project's dependencies are left alone"}}};
inline constexpr PreferenceKey<std::vector<std::string>> protectedFolders{
    {.key = "carpetasProtegidas",
     .kind = PreferenceKind::folders,
     .meaning = {"carpetas que nunca se tocan", "folders that are never touched"}}};
inline constexpr PreferenceKey<bool> aiSummaryEnabled{
    {.key = "resumenConIA",
     .kind = PreferenceKind::boolean,
     .standard = true,
     .meaning = {"escribir el resumen con IA", "write the summary with AI"}}};
inline constexpr PreferenceKey<bool> autoExplain{
    {.key = "explicarAlAnalizar",
     .kind = PreferenceKind::boolean,
     .standard = false,
     .meaning = {"explicar las carpetas tras cada análisis", "explain folders after each scan"}}};
inline constexpr PreferenceKey<double> textScale{{.key = "tamanoTexto",
                                                  .kind = PreferenceKind::number,
                                                  .standard = 1.0,
                                                  .least = 0.5,
                                                  .most = 3,
                                                  .meaning = {"tamaño del texto", "text size"}}};
inline constexpr PreferenceKey<std::optional<std::string>> seenNews{
    {.key = "novedadesVistas",
     .kind = PreferenceKind::text,
     .meaning = {"última versión cuyas novedades se vieron", "last version whose news were seen"}}};
inline constexpr PreferenceKey<std::optional<lumo::Date>> lastWeeklyCleanup{
    {.key = "ultimaLimpiezaSemanal",
     .kind = PreferenceKind::date,
     .meaning = {"fecha de la última limpieza semanal", "date of the last weekly cleanup"}}};
inline constexpr PreferenceKey<std::optional<std::int64_t>> lastWeeklyCleanupBytes{
    {.key = "ultimaLimpiezaSemanalBytes",
     .kind = PreferenceKind::integer,
     .meaning = {"bytes que liberó", "bytes it freed"}}};
inline constexpr PreferenceKey<std::optional<lumo::Date>> lastLowSpaceWarning{
    {.key = "avisoPocoEspacioEnviado",
     .kind = PreferenceKind::date,
     .meaning = {"fecha del último aviso de poco espacio", "date of the last low-space warning"}}};
inline constexpr PreferenceKey<std::optional<std::string>> localModel{
    {.key = "modeloLocal",
     .kind = PreferenceKind::localModel,
     .meaning = {"modelo de lenguaje en este ordenador: dirección y nombre",
                 "language model on this computer: address and name"}}};
inline constexpr PreferenceKey<std::optional<std::string>> windowPlace{
    {.key = "ventana",
     .kind = PreferenceKind::text,
     .meaning = {"tamaño y lugar de la ventana", "size and place of the window"}}};

} // namespace preference

/// All of them in the order in which they are shown.
inline constexpr std::array<const Preference*, 20> allPreferences{&preference::goalBytes,
                                                                  &preference::isWelcomeSeen,
                                                                  &preference::showWholeDisk,
                                                                  &preference::appearance,
                                                                  &preference::language,
                                                                  &preference::showInMenuBar,
                                                                  &preference::lowSpaceGB,
                                                                  &preference::notifyLowSpace,
                                                                  &preference::autoCleanWeekly,
                                                                  &preference::activeProjectDays,
                                                                  &preference::protectedFolders,
                                                                  &preference::aiSummaryEnabled,
                                                                  &preference::autoExplain,
                                                                  &preference::textScale,
                                                                  &preference::seenNews,
                                                                  &preference::lastWeeklyCleanup,
                                                                  &preference::lastWeeklyCleanupBytes,
                                                                  &preference::lastLowSpaceWarning,
                                                                  &preference::localModel,
                                                                  &preference::windowPlace};

/// The preference that a person's word names; none when there is no such one.
const Preference* preferenceNamed(std::string_view word);

} // namespace tarvo
