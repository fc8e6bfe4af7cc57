[playlist]
File=
Files
File1 = http://a.example/%zz
