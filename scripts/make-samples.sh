#!/usr/bin/env bash
# Writes Pellix's own small sample set into the folder given (default build/samples/in):
# raster images of each kind the kernel takes, documents, and files that must be refused.
set -euo pipefail
out="${1:-build/samples/in}"
rm -rf "$out"
mkdir -p "$out/raster" "$out/documents" "$out/refused"
cd "$out"

# Raster images.
gm convert -size 1600x1200 plasma:fractal -quality 90 raster/photo.jpg
gm convert -size 480x240 xc:none -fill white -draw "roundrectangle 40,40 440,200 30,30" \
  -fill none -stroke white -strokewidth 8 -draw "circle 240,120 240,60" raster/white-logo.png
gm convert -size 800x600 gradient:navy-gold -compress LZW raster/scan.tif
gm convert -size 300x200 plasma:fractal raster/banner.gif
gm convert -size 256x256 gradient:red-blue raster/icon.bmp
vips copy raster/photo.jpg raster/photo.webp
vips copy raster/photo.jpg raster/photo.jp2
gm convert raster/photo.jpg -colorspace CMYK raster/print-cmyk.jpg
gm convert -size 800x600 plasma:fractal raster/really-a-png.jpg.tmp.png
mv raster/really-a-png.jpg.tmp.png raster/really-a-png.jpg

# Documents: a PDF of three pages, an Illustrator-style AI (a PDF under its name), an EPS and
# a PCX scan. Ghostscript's PDFs open with a long comment that hides their first object from
# the kernel's look at the head; qpdf writes the same document with its objects first.
cat > documents/brochure.ps <<'PS'
/Helvetica findfont 48 scalefont setfont
1 1 3 { /n exch def 72 700 moveto (Page ) show n 3 string cvs show
        0.2 n 0.25 mul 0.6 setrgbcolor 72 200 400 400 rectfill 0 setgray showpage } for
PS
cat > documents/badge.eps <<'PS'
%!PS-Adobe-3.0 EPSF-3.0
%%BoundingBox: 0 0 200 120
0.9 0.3 0.1 setrgbcolor 10 10 180 100 rectfill
1 setgray /Helvetica-Bold findfont 36 scalefont setfont 30 45 moveto (BADGE) show
showpage
PS
gs -q -dSAFER -dBATCH -dNOPAUSE -sDEVICE=pdfwrite -sOutputFile=documents/gs.pdf \
  documents/brochure.ps
qpdf documents/gs.pdf documents/brochure.pdf
gs -q -dSAFER -dBATCH -dNOPAUSE -dEPSCrop -sDEVICE=pdfwrite -sOutputFile=documents/gs.pdf \
  documents/badge.eps
qpdf documents/gs.pdf documents/logo.ai
rm documents/brochure.ps documents/gs.pdf
gm convert -size 640x480 gradient:teal-white -fill black -draw "circle 320,240 320,120" \
  documents/scan.pcx

# Files that must be refused with their codes.
printf 'plain text\n' > refused/notes.xyz
printf 'no extension\n' > refused/README
: > refused/empty.jpg
head -c 300 raster/photo.jpg > refused/truncated.jpg
printf '%%PDF-1.7\n%s\n' "$(head -c 100 /dev/zero | tr '\0' '%')" > refused/no-object.pdf
