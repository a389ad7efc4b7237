#include "graphiques/ecriture.h"

#include <cassert>
#include <cerrno>
#include <cstdio>
#include <filesystem>

#include "core/valeurs.h"
#include "graphiques/textes.h"
#include "store/remplacement.h"
#include "store/texte1252.h"

namespace fenlor {

namespace {

std::string Nombre(f64 valeur) {
  char texte[32];
  std::snprintf(texte, sizeof texte, "%.2f", valeur);
  return texte;
}

std::string Echappe(const std::string& texte) {
  std::string sortie;
  for (const char c : VersUtf8(texte)) {
    if (c == '&')
      sortie += "&amp;";
    else if (c == '<')
      sortie += "&lt;";
    else if (c == '>')
      sortie += "&gt;";
    else if (static_cast<unsigned char>(c) < ' ')
      sortie += ' ';
    else
      sortie += c;
  }
  return sortie;
}

std::string Points(const Forme& forme) {
  std::string texte;
  for (const PointForme& p : forme.points)
    texte += (texte.empty() ? "" : " ") + Nombre(p.x) + ',' + Nombre(p.y);
  return texte;
}

std::string EcritTexte(const Forme& forme, const std::string& couleur, const MesureTexte& mesure) {
  assert(forme.sorte == SorteForme::Texte && forme.points.size() == 1);
  const PointForme p = forme.points.front();
  const char* ancre = forme.cote == Cote::Gauche ? "start" : forme.cote == Cote::Droite ? "end" : "middle";
  std::string texte = "<text x=\"" + Nombre(p.x) + "\" y=\"" + Nombre(p.y) + "\" font-size=\"" +
                      Nombre(forme.hauteur) + "\" text-anchor=\"" + ancre + "\" fill=\"" + couleur + '"';
  // Whatever face the reader has, the text keeps the room that it was given.
  texte += " textLength=\"" + Nombre(mesure.Largeur(forme.texte, forme.hauteur, forme.gras)) +
           "\" lengthAdjust=\"spacingAndGlyphs\"";
  if (forme.gras) texte += " font-weight=\"bold\"";
  if (forme.debout) texte += " transform=\"rotate(-90 " + Nombre(p.x) + ' ' + Nombre(p.y) + ")\"";
  return texte + '>' + Echappe(forme.texte) + "</text>\n";
}

std::string EcritForme(const Forme& forme, const ThemeGraphique& theme, const MesureTexte& mesure) {
  const std::string couleur = EnHexa(Couleur(theme, forme.encre));
  if (forme.sorte == SorteForme::Texte) return EcritTexte(forme, couleur, mesure);
  if (forme.sorte == SorteForme::Ligne)
    return "<polyline points=\"" + Points(forme) + "\" fill=\"none\" stroke=\"" + couleur +
           "\" stroke-width=\"" + Nombre(forme.epaisseur) + "\" stroke-linecap=\"round\"/>\n";
  const std::string bord = forme.bord
                               ? "\" stroke=\"" + EnHexa(Couleur(theme, {TeinteAxe})) + "\" stroke-width=\"" +
                                     Nombre(forme.epaisseur) + "\" stroke-linejoin=\"round"
                               : std::string();
  return "<polygon points=\"" + Points(forme) + "\" fill=\"" + couleur + bord + "\"/>\n";
}

}  // namespace

std::string EcritSvg(const DessinGraphique& dessin, f64 largeur, f64 hauteur, const ThemeGraphique& theme,
                     const MesureTexte& mesure) {
  const std::string l = Nombre(largeur), h = Nombre(hauteur);
  std::string svg =
      "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + l +
      "\" height=\"" + h + "\" viewBox=\"0 0 " + l + ' ' + h +
      "\" font-family=\"'DejaVu Sans',Verdana,Arial,sans-serif\">\n";
  svg += "<rect width=\"" + l + "\" height=\"" + h + "\" fill=\"" + EnHexa(theme.fond) + "\"/>\n";
  for (const Forme& forme : dessin.formes) svg += EcritForme(forme, theme, mesure);
  return svg + "</svg>\n";
}

std::string EcritValeurs(const SerieGraphique& serie) {
  std::string texte;
  for (const PointGraphique& point : serie.points) {
    const f64 valeur = Arrondi2(point.valeur);
    texte += point.libelle + '\t' + (valeur == 0 ? "0,00" : FormatMontant(valeur, 2)) + '\n';
  }
  return texte;
}

Refus EcritExport(CFenlorApp& app, const std::string& chemin, std::string_view octets) {
  std::error_code ignore;
  const auto genre = std::filesystem::status(chemin, ignore).type();
  int erreur = 0;
  if (genre == std::filesystem::file_type::directory)
    erreur = EISDIR;
  else if (genre != std::filesystem::file_type::regular && genre != std::filesystem::file_type::not_found)
    erreur = EPERM;
  Empreinte empreinte;
  if (!erreur)
    erreur = RemplaceFichier(app.Magasin.SystemeFichiers(), chemin, chemin + ".part", octets, empreinte);
  if (!erreur) return {};
  return Refus(ErrEcritureGraphique, "", {DepuisUtf8(chemin).value_or(chemin), TexteErreurSysteme(erreur)});
}

}  // namespace fenlor
