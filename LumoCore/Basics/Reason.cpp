#include "LumoCore/Basics/Reason.h"

#include "LumoCore/Basics/Words.h"

#include <algorithm>
#include <array>
#include <cerrno>

namespace lumo {

namespace {

struct Known {
    int code;
    std::string_view es;
    std::string_view en;
};

constexpr std::array<Known, 21> knownReasons{{
    {EACCES, "no hay permiso", "permission denied"},
    {EPERM, "el sistema no lo permite", "the system does not allow it"},
    {ENOENT, "no existe", "no such file or folder"},
    {ENOTDIR, "una parte de la ruta no es una carpeta", "a part of the path is not a folder"},
    {EISDIR, "es una carpeta", "it is a folder"},
    {EEXIST, "ya existe", "it already exists"},
    {EINVAL, "no es válido aquí", "it is not valid here"},
    {ENOSPC, "el disco está lleno", "the disk is full"},
    {EDQUOT, "se ha agotado la cuota de disco", "the disk quota is used up"},
    {EROFS, "el disco es de solo lectura", "the disk is read-only"},
    {EFBIG, "es demasiado grande", "it is too large"},
    {EIO, "el disco ha fallado", "the disk failed"},
    {ENAMETOOLONG, "el nombre es demasiado largo", "the name is too long"},
    {ELOOP, "es un enlace", "it is a link"},
    {EXDEV, "está en otro volumen", "it is on another volume"},
    {EBUSY, "está en uso, o hay un volumen montado ahí", "it is in use, or a volume is mounted there"},
    {ENOTEMPTY, "otro programa escribe en la carpeta", "another program is writing into the folder"},
    {EMFILE, "hay demasiados ficheros abiertos", "too many files are open"},
    {E2BIG, "son demasiados elementos de una vez", "these are too many items at once"},
    {ECANCELED, "está en una carpeta protegida en Ajustes", "it's in a folder protected in Settings"},
    {ESTALE, "ha cambiado mientras tanto", "it changed meanwhile"},
}};

} // namespace

std::string reasonText(const platform::SystemError& error, Language language) {
    const auto known = std::ranges::find(knownReasons, error.code, &Known::code);
    return known != knownReasons.end() ? Words{known->es, known->en}.in(language) : error.reason();
}

} // namespace lumo
