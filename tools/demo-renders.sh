#!/usr/bin/env bash
# The demo pictures: the default look and chosen looks of every effect rendered on real
# photographs with the command line, and every shipped look on one photograph with a
# contact sheet of them all.
#   demo-renders.sh NATIVE_BIN DATA_DIR PHOTO_DIR OUT_DIR
# Without photographs (tools/fetch-photos.sh could not get them) a test card stands in.
set -euo pipefail
bin=$1 data=$2 photos=$3 out=$4
rm -rf "$out"
mkdir -p "$out/looks" "$out/input"

# The pictures: three photographs, and one of them with a soft oval of transparency.
names=()
for p in astronaut coffee chelsea; do
  if [ -s "$photos/$p.png" ]; then cp "$photos/$p.png" "$out/input/$p.png"; names+=("$p"); fi
done
if [ ${#names[@]} -eq 0 ]; then
  "$bin/qz-testcard" "$out/input/testcard.png" 600 400 RGB
  names=(testcard)
fi
first=${names[0]} second=${names[1]:-${names[0]}} third=${names[2]:-${names[0]}}
"$bin/qz-testcard" "$out/input/$third-transparent.png" 451 300 RGB_ALPHA "$out/input/$third.png"

render() { # render OUTPUT INPUT [ARGS...]
  local name=$1 input=$2
  shift 2
  "$bin/quenzit" render --data "$data" "$out/input/$input.png" -o "$out/$name.png" "$@"
}
off=(-s WFN1=No_Texture.qzt -s SFN1=No_Texture.qzt -s BkFN=No_Texture.qzt)

for p in "${names[@]}"; do render "default-$p" "$p"; done
# The washes alone, one of each type.
render wash-erosion "$second" "${off[@]}" -s WFN1=Scratched.qzt -s WTp1=0 -s WIv1=true -s Cov1=-30
render wash-stain "$second" "${off[@]}" -s WFN1=Water_Stains.qzt -s WTp1=1 -s WSt1=2117760 -s Cov1=20
render wash-bleach "$second" "${off[@]}" -s WFN1=Grunge_Splatter.qzt -s WTp1=2 -s WSt1=16777215
render wash-color "$second" "${off[@]}" -s WFN1=Coffee_Rings.qzt -s WTp1=3 -s WSt1=4243680 -s W2Ex=true \
  -s WFN2=Fine_Scratches.qzt -s WTp2=1
# The surfaces alone: two Colorize surfaces with perspective, Enhance, Vivid.
render surface-colorize-two "$first" "${off[@]}" -s SFN1=Battleship.qzt -s Sf2E=true -s SFN2=Fiberglass.qzt \
  -s STp1=0 -s STp2=0 -s SPO1=true -s SDh1=80 -s SDh2=60
render surface-enhance "$first" "${off[@]}" -s SFN1=Leather_Grain.qzt -s STp1=3 -s SDh1=100
render surface-vivid "$first" "${off[@]}" -s SFN1=Crackle_Glaze.qzt -s STp1=4 -s SHue=30
# The background behind a transparent picture: plain, and Enhanced with Entire.
render background-plain "$third-transparent" "${off[@]}" -s BkFN=Rusted.qzt
render background-enhanced "$third-transparent" "${off[@]}" -s BkFN=Rusted.qzt -s BEnh=1 -s BHue=25 -s BkEn=true
# A surface taking in the wash area on the transparent picture.
render wash-area "$third-transparent" -s SfEn=true -s SInW=true -s WTp1=0 -s Cov1=-20

# Every shipped look: the whole looks, and the wash, surface and background presets over
# the default look; backgrounds behind the transparent picture, where they show.
count=0
for kind in Basic Wash Surface Background; do
  input=$second
  [ $kind = Background ] && input=$third-transparent
  for preset in "$data/Presets/$kind"/*.qztpst; do
    [ -e "$preset" ] || continue
    render "looks/$kind-$(basename "$preset" .qztpst)" "$input" -p "$preset"
    count=$((count + 1))
  done
done
[ $count -gt 0 ] && "$bin/qz-contact" "$out/looks-contact.png" "$out/looks" --pictures >/dev/null
echo "demo: $(find "$out" -maxdepth 1 -name '*.png' | wc -l) pictures and $count looks in $out"
