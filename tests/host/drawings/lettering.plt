IN;SP1;SI0.5,0.75;PU400,2600;LB ABCDEFGHIJKLM
 NOPQRSTUVWXYZ
 abcdefghijklm
 nopqrstuvwxyz
 0123456789 -+=
 !"#$%&'()*,./:
 ;<>?@[\]^_`{|}~;DT*,1;SI0.3,0.4;DI0,1;PU6400,400;LBup along*DI1,1;PU6600,400;LBaslant*;DI;DT;PU400,-1200;LBthe end;SP0;